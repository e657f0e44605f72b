// What the tests of collections share: elements with content, and what was unpacked and told.
#pragma once

#include "content/content_errors.h"
#include "exec/cli_exec.h"
#include "report/result_log.h"
#include "unpacking.h"
#include "xml/xml_document.h"

namespace test {

// A result log that keeps the messages.
class RecordingResult : public zelvo::Log {
  public:
    RecordingResult() { zelvo::theLog = this; }
    ~RecordingResult() override { zelvo::theLog = nullptr; }
    void setSuccess(bool /*success*/) override {}
    void log(const zelvo::ExTraceable& failure) override {
        const std::string text = zelvo::formatPlainTextMessage(failure);
        messages.push_back(text.substr(0, text.find('\n')));
        messages.back().erase(messages.back().rfind(" ["));
    }
    void pushObject(const std::string& /*name*/, const std::string& /*type*/) override {}
    void popObject() override {}
    int getDepth() const override { return 0; }

    std::vector<std::string> messages;
};

// An element with one cid for each "TYPE ARCHIVE OFFSET".
class Element {
  public:
    Element(std::initializer_list<std::array<std::string, 3>> cids,
            const std::string& attribute = "")
        : document_(textOf(cids, attribute)) {}
    operator zelvo::XmlNode() const {
        return zelvo::tXPathExpr(document_.doc(), "/e", nullptr).getXmlNode();
    }

  private:
    static std::string textOf(std::initializer_list<std::array<std::string, 3>> cids,
                              const std::string& attribute) {
        std::string text = "<e " + attribute + "><content>";
        for (const auto& [type, archive, offset] : cids) {
            text += "<cid type='" + type + "' path='archives' referrer='true' offset='" + offset +
                    "'><content-file>" + archive + "</content-file></cid>";
        }
        return text + "</content></e>";
    }
    zelvo::tXmlDocument document_;
};

class Collecting : public Unpacking {
  protected:
    Collecting() {
        zelvo::CliExec::first_run = zelvo::CliExec::use_gate = false;
        for (const char* place : {"vhosts", "mail", "lists", "calls", "product/RMK/tmp"}) {
            std::filesystem::remove_all(box(place));
        }
        std::filesystem::create_directories(box("product/RMK/tmp"));
        unpacker.work = [this](const std::string& to) {
            unpacked.push_back(plain(to.substr(box("").size())));
            for (const std::string& include : unpacker.includes) unpacked.back() += " " + include;
            if (fails(to)) throw EXC(zelvo::UnExpectedResult) % "broken";
        };
    }

    // Makes a utility that notes its arguments, then runs a script.
    static void utility(const std::string& path, const std::string& script = "") {
        std::filesystem::create_directories(std::filesystem::path(path).parent_path());
        writeProgram(path,
                     "n=${0##*/}; echo \"${n%.*} $*\" >> " + box("calls") + "\n" + script + "\n");
    }
    static std::string calls() { return plain(contentOf(box("calls"))); }

    FakeUnpacker unpacker;
    // "DESTINATION INCLUDE...", below the box's directory.
    std::vector<std::string> unpacked;
    std::function<bool(const std::string& destination)> fails = [](const std::string&) {
        return false;
    };
    RecordingResult result;
};

}  // namespace test
