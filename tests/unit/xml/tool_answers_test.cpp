#include "xml/tool_answers.h"

#include <boost/lexical_cast.hpp>

#include "panel_box.h"

namespace zelvo {
namespace {

std::string gate(const std::string& text) {
    const auto cli = getCliGateResponse(text);
    return (cli->isOk() ? "ok " : "") + std::to_string(cli->getReturn()) + "|" + cli->getError() +
           "|" + cli->getStdout() + "|" + cli->getStderr();
}

std::string files(const std::string& text) {
    const auto list = getFileList(text);
    std::string all = std::to_string(list->getTotalSize());
    for (const DumpFile& file : list->getFileList()) {
        all += " " + file.name + "," + std::to_string(file.size) + "," + file.md5sum;
    }
    return all;
}

std::string addresses(const std::string& text) {
    std::string all;
    for (const auto& [address, ip] : getZelvoIpInfo(text)) {
        all += address + "," + ip.type + (ip.defaultDomain ? ",domain " : " ");
    }
    return all;
}

const std::string kBadNumber = boost::bad_lexical_cast().what();

// A tool's answer, and what is read of it or the failure. Catches a missing element that fails, one
// that is taken from elsewhere in the answer, and a bad number that is taken for a missing one.
const std::tuple<std::string (*)(const std::string&), const char*, std::string> kAnswers[] = {
    {gate, "<cli><ok/><return>-9223372036854775808</return></cli>", "ok -9223372036854775808|||"},
    {gate, "<cli><x><ok/><stdout>deep</stdout></x><return>2</return></cli>", "2|||"},
    {gate, "<cli><return> 1</return></cli>", kBadNumber},
    {files,
     "<contentlist size='18446744073709551615'>\n<file size='4294967296' md5sum='0f'>b.tar</file>"
     "\n<other>x</other><file>a.tar</file></contentlist>",
     "18446744073709551615 b.tar,4294967296,0f a.tar,0,"},
    {files, "<contentlist/>", "NoSuchAttribute: Node contentlist does not have attribute size"},
    {files, "<contentlist size='1'><file size=''>a</file></contentlist>", kBadNumber},
    {addresses,
     "<ipinfo><ip name='2'><type>exclusive</type><def_domain>d</def_domain></ip><ip name='1'><type>"
     "shared</type><def_domain/></ip><ip name='2'><type>shared</type></ip></ipinfo>",
     "1,shared,domain 2,shared "},
};

TEST(ToolAnswers, AreReadOrRefused) {
    for (const auto& [reader, text, expected] : kAnswers) {
        std::string read;
        read += test::faultOf([&, reader = reader, text = text] { read = reader(text); });
        EXPECT_EQ(read, expected) << text;
    }
}

}  // namespace
}  // namespace zelvo
