// What tests of single deployers share: a session with its logs, utilities that are scripts, and
// elements of a dump.
#pragma once

#include "commons/session.h"
#include "exec/cli_exec.h"
#include "panel_box.h"
#include "recording_log.h"
#include "report/result_log.h"
#include "xml/xml_document.h"
#include "xml/xml_node.h"

namespace test {

class Deploying : public testing::Test {
  protected:
    Deploying() {
        zelvo::CliExec::first_run = zelvo::CliExec::use_gate = false;
        zelvo::theLog = &result_;
    }
    ~Deploying() override { zelvo::theLog = nullptr; }

    // name: below the directory of the panel's programs.
    static void utility(const std::string& name, const std::string& script) {
        const std::filesystem::path path = panelBox.dir.path("product/admin/" + name);
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path) << "#!/bin/sh\n" << script << "\n";
        std::filesystem::permissions(path, std::filesystem::perms(0755));
    }

  private:
    TempDir dir_;
    RecordingLog debugLog_;
    zelvo::SessionLifetimeController session_{dir_.path("session")};
    zelvo::XmlLog result_;
};

// The root element of a document.
class Element {
  public:
    explicit Element(const std::string& text) : document_(text) {}
    operator zelvo::XmlNode() const {
        return zelvo::tXPathExpr(document_.doc(), "/*", nullptr).getXmlNode();
    }

  private:
    zelvo::tXmlDocument document_;
};

}  // namespace test
