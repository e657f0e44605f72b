// Domains through the real program: the fixed order of what a domain holds, what each word does,
// domain templates, suspension, and how far a failure reaches.

#include "outcome.h"
#include "scenario.h"

namespace {

TEST(Domains, AreRestoredInTheirOrder) { runCases("domains/whole.txt"); }
TEST(Domains, FailNoFurtherThanTheyMust) { runCases("domains/failing.txt"); }
TEST(Domains, AreResumedOnEveryWayOut) { runCases("domains/suspended.txt"); }
TEST(Domains, HaveTheirExtras) { runCases("domains/extras.txt"); }
TEST(Domains, FollowTheirTemplate) { runCases("domains/templated.txt"); }
TEST(Domains, HaveTheirZones) { runCases("domains/zones.txt"); }
TEST(Domains, HaveTheirAliases) { runCases("domains/aliases.txt"); }

// Catches: a word that follows the accounts' rule in place of the domains' own.
TEST(Domains, AreChangedAsTheWordSays) {
    const std::string update = "domain --update a.example -guid g-a -creation-date 2010-01-02\n";
    const std::string settings =
        "domain_pref --update a.example -max_box 1 -expiration 9\n"
        "domain_pref --update a.example -www true\n"
        "domalias --create b.example -domain a.example\n"
        "domalias --update b.example -status enabled\n"
        "dns --set-slave a.example\n"
        "traffic --add-batch a.example <<<1\n"
        "domain_pref --update a.example -expiration 9\n";
    const std::string marks =
        "domain --update a.example -status enabled\n"
        "domain --update a.example -guid g-a\n";
    const std::pair<const char*, std::string> kWords[] = {
        {"update", update + settings + marks},
        {"change-owner",
         "domain --change-owner a.example -owner admin\n" + update + settings + marks},
        {"convert-to-client", update + settings + marks},
        {"convert-to-reseller", update + settings + marks},
        {"auxiliary", marks},
        {"rejected-delete", marks},
        {"unheard-of", marks},
        {"", marks},
        {"delete", "domain --remove a.example\n"}};
    for (const auto& [word, calls] : kWords) {
        const std::string dump =
            "<domain name='a.example' guid='g-a' cr-date='2010-01-02' deployer-action='" +
            std::string(word) +
            "'><limits-and-permissions><limit name='max_box'>1</limit>"
            "<limit name='expiration'>9</limit></limits-and-permissions>"
            "<preferences><domain-alias name='b.example'><status><enabled/></status>"
            "</domain-alias></preferences><properties><dns-zone type='slave'/>"
            "<status><enabled/></status></properties><traffic>1</traffic></domain>";
        runCase({word,
                 {{"before", "client --create old\ndomain --create a.example -owner old\n"},
                  {"options", "--skip-xsd"},
                  {"dump", dump},
                  {"calls", calls}}});
    }
}

// Catches: a domain that stays suspended, and a success that is none. A number that is none is no
// failure of an object.
TEST(Domains, EndTheRunByANumberThatIsNone) {
    // What the domain holds, the calls for it and what is said.
    const std::string kRows[][3] = {
        {"<limits-and-permissions><limit name='max_box'>1</limit>"
         "<limit name='disk_space'>abc</limit></limits-and-permissions>",
         "", "The value of the limit 'Domain a.example disk_space' is not a number: 'abc'"},
        {"<mailsystem><mailusers><mailuser name='joe' "
         "mailbox-quota='5k'/></mailusers></mailsystem>",
         "", "The value of the mailbox quota of 'joe' is not a number: '5k'"},
        {"<properties><dns-zone type='slave'><dns-zone-param name='x' value='1h'/></dns-zone>"
         "</properties>",
         "domain_pref --update a.example -www true\ndns --set-slave a.example\n",
         "The value of the zone parameter 'x' is not a number: '1h'"}};
    for (const auto& [held, calls, said] : kRows) {
        Sandbox box;
        prepare(box, {"",
                      {{"before", "domain --create a.example\n"},
                       {"dump", "<domain name='a.example' deployer-action='update'>" + held +
                                    "</domain><domain name='b.example'/>"}}});
        box.failsWith(1, "Uncaught std::exception: " + said, Sandbox::deployment("--suspend"));
        EXPECT_EQ(callsOf(box), "$suspend a.example\ndomain --update a.example\n" + calls +
                                    "$resume a.example\n");
        EXPECT_EQ(outcomeOf(box), "error\n");
    }
}

// Catches: a zone that is lost without a trace, since no program takes an argument of more than 128
// KiB, its end included.
TEST(Domains, TellOfAZoneThatIsTooLongForAnArgument) {
    const auto zone = [](std::size_t bytes) {
        return std::string("<dns-zone type='slave'><dnsrec type='master' src='") +
               std::string(bytes - std::string("master,;").size(), '1') + "'/></dns-zone>";
    };
    runCase({"",
             {{"dump",
               "<domain name='a.example'><properties>" + zone(131072) + "</properties></domain>"},
              {"calls", "$create a.example\ndns --set-slave a.example\n"},
              {"log",
               "The records of the zone a.example, a list of 131072 bytes, were not saved\n"
               "DNS zone deployment was failed\n"}}});
}

// Catches: a part that is lost with the one before it, that travels along with the next one, or
// that is told twice.
TEST(Domains, LoseOnlyTheRefusedPartOfTheirAdministrator) {
    const std::string dump =
        "<domain name='a.example'><domainuser uid='501' max-button-length='18' contact='Ann' "
        "skin='winter'><password type='plain'>secret-1</password><permission name='manage_dns'/>"
        "<pinfo name='email'>ann@a.example</pinfo><pinfo name='company'>A</pinfo>"
        "<pinfo name='phone'>1</pinfo><pinfo name='country'>DE</pinfo><pinfo name='zip'>8</pinfo>"
        "<pinfo name='locale'>de-DE</pinfo></domainuser></domain>";
    // Their options, and whether their failure costs the parts behind them.
    const std::vector<std::pair<std::string, bool>> kParts = {
        {"-passwd '' -uid 501", true},
        {"-max-button-length 18 -status true -manage_dns true", false},
        {"-email ann@a.example", true},
        {"-pname Ann", true},
        {"-company A", false},
        {"-phone 1", false},
        {"-country DE -zip 8", false},
        {"-locale de-DE", false},
        {"-skin winter", false}};
    const auto call = [](const std::string& options) {
        return (options[1] == 'p' && options[2] == 'a' ? "QRD_PASSWORD=secret-1 " : "") +
               ("domadmin --update a.example " + options + "\n");
    };
    const auto failed = [](const std::string& options, int code) {
        return "  ExecCmd::Failed: domadmin --update a.example " + replaceAll(options, "''", "") +
               " => " + std::to_string(code) + "\n";
    };
    std::string all = kParts[0].first;
    for (std::size_t part = 1; part < kParts.size() - 1; ++part) all += " " + kParts[part].first;
    for (std::size_t refused = 0; refused < kParts.size(); ++refused) {
        std::string calls = "domain --create a.example -owner admin -notify false\n" + call(all);
        std::string result = "domain a.example\n" + failed(all, 5);
        for (std::size_t part = 0; part < kParts.size(); ++part) {
            calls += call(kParts[part].first);
            const bool isSkin = part == kParts.size() - 1;
            if (part == refused && !isSkin) result += failed(kParts[part].first, 6);
            if (part == refused && kParts[part].second) break;
        }
        runCase({kParts[refused].first,
                 {{"faults", "call 2: exit 5\ncall " + std::to_string(refused + 3) + ": exit 6\n"},
                  {"dump", dump},
                  {"calls", calls + "domain_pref --update a.example -www true\n"},
                  {"result", result}}});
    }
}

}  // namespace
