// How the parts of the reader of info documents come to a document.
#pragma once

#include <string>

#include "repository/info_xml_reader.h"
#include "xml/text_reader.h"
#include "xml/xml_errors.h"

namespace zelvo {

// Calls use with a reader of the document in a local file. Raises tInfoXmlReader::XmlReaderError
// for a file that cannot be opened or is not well-formed as far as it is read.
template <class Use>
void readDocument(const std::string& file, Use&& use) {
    try {
        XmlTextReader reader(file);
        use(reader);
    } catch (const Exc<&tError_WrongInputFile>&) {
        throw EXC(tInfoXmlReader::XmlReaderError) % ("unable to open file " + file);
    } catch (const Exc<&tError_ParseFile>& failure) {
        throw EXC_INNER(tInfoXmlReader::XmlReaderError, failure) % ("unable to read file " + file);
    }
}

}  // namespace zelvo
