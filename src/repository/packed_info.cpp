#include "repository/packed_info.h"

#include <algorithm>
#include <iterator>

#include "repository/names.h"
#include "repository/repository_errors.h"
#include "repository/repository_log.h"

namespace zelvo {

namespace {

[[noreturn]] void refuse(const std::string& reason) {
    throw ImportException(EXC(ImportError) % reason, DumpImportStatus::kNew);
}

void requireLabel(const std::string& name) {
    try {
        GetInfoXmlsLabel(name);
    } catch (const ExTraceable& failure) {
        LogMsg(failure);
        refuse("bad name of info file");
    }
}

}  // namespace

std::string FindPackedInfo(const std::vector<std::string>& topFiles, const std::string& archive) {
    std::vector<std::string> documents;
    std::copy_if(topFiles.begin(), topFiles.end(), std::back_inserter(documents),
                 [](const std::string& file) { return file.ends_with(".xml"); });
    if (documents.size() > 1) {
        refuse("root of arhive " + archive + " contains more than 1 xml file");
    }
    if (documents.empty()) {
        refuse("root of arhive " + archive + " does no contains xml files");
    }
    requireLabel(documents.front());
    return documents.front();
}

}  // namespace zelvo
