// Mail lists through the real program.

#include "scenario.h"

#include <string>

namespace {

TEST(MailLists, AreMadeWithMembersAndArchives) { runCases("mail/lists.txt"); }

// Catches: members that are lost or said twice between two calls, a call that is full one member
// too early or never, and a member that is cut or held back because it fills a call alone.
TEST(MailLists, GetTheirMembersInCallsOfAThousandBytes) {
    const std::string name(82, 'm');  // "add:" and twelve of them, each with its comma: 1000 bytes
    const std::string longName(1500, 'l');
    std::string recipients;
    std::string first = "add:" + name;
    for (int i = 0; i < 13; ++i) {
        recipients += "<recipient>" + name + "</recipient>";
        first += i > 0 ? "," + name : "";
    }
    recipients += "<recipient>" + longName + "</recipient><recipient>last</recipient>";
    const std::string update = "maillist --update news -domain a.example ";
    runCase({"",
             {{"dump",
               "<domain name='a.example'><maillists><status><enabled/></status>"
               "<maillist name='news'><owner>o</owner>" +
                   recipients + "<status><enabled/></status></maillist></maillists></domain>"},
              {"calls",
               "$create a.example\nmaillist --update-service a.example -status enabled\n"
               "QRD_PASSWORD=RANDOM1 maillist --create news -domain a.example -email o"
               " -passwd ''\n" +
                   update + "-members " + first + "\n" + update + "-members add:" + longName +
                   "\n" + update + "-members add:last\n" + update + "-status enabled\n"}}});
}

}  // namespace
