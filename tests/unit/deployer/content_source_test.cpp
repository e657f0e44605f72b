#include "deployer/content_source.h"

#include <gtest/gtest.h>

#include "xml/xml_document.h"

using namespace zelvo;

namespace {

// Catches: archives that are looked for in the wrong place.
TEST(RepositoryPath, IsTheCommandLinesTheDumpsOrTheSession) {
    struct Row {
        const char *url, *base, *expected;
    };
    for (const Row& row :
         {Row{"ftp://host/x", " base='/a/b.xml'", "ftp://host/x"}, Row{"", "", "/session"},
          Row{"", " base='/var/dumps/info.xml'", "/var/dumps"}, Row{"", " base=''", "/session"},
          Row{"", " base='info.xml'", "/session"}, Row{"", " base='/info.xml'", "/session"}}) {
        tXmlRmkDocument dump("<dump" + std::string(row.base) + "/>");
        dump.initFileDoc("dump");
        EXPECT_EQ(chooseRepositoryPath(row.url, XmlNode(dump.doc(), dump.root()), "/session"),
                  row.expected)
            << row.url << row.base;
    }
}

}  // namespace
