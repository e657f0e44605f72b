// Domains through the real program: the fixed order of what a domain holds, what each word does,
// domain templates, suspension, and how far a failure reaches.

#include "dumps.h"

namespace {

// A domain of the client bob, who is only the way to it.
std::string ofBob(const std::string& attributes, const std::string& inside = "") {
    return "<admin><clients><client name='bob' deployer-action='auxiliary'><domains>"
           "<domain name='a.example' " +
           attributes + ">" + inside + "</domain></domains></client></clients></admin>";
}

// What went wrong with it.
std::string inBob(const std::string& inside) { return result(object("bob", "client", inside)); }
std::string inDomain(const std::string& inside) {
    return inBob(object("a.example", "domain", inside));
}

constexpr char kBob[] = "client --create bob\n";
constexpr char kExisting[] = "client --create bob\ndomain --create a.example -guid g-a\n";
const std::string kCreate = "domain --create a.example -owner bob -notify false\n";
const std::string kWww = "domain_pref --update a.example -www true\n";

class Domain : public ::testing::TestWithParam<Restore> {};

TEST_P(Domain, IsRestoredByTheseCommands) {
    Sandbox box;
    runAndExpect(box, GetParam());
}

// Catches: an option missing, misspelt or in a wrong place, a step out of its order.
const Restore kWhole[] = {
    {.name = "WithEverything",
     .before = kBob,
     .dump = ofBob("cr-date='2010-01-02' guid='g-a' www='false'", R"(
<traffic>1 http
</traffic>
<maillists><status><disabled-by name="admin"/></status></maillists>
<domainuser contact="  Ann A. " status="true" lock-screen="false" max-button-length="18"
            skin="winter" ownership="true" uid="501">
  <pinfo name="phone">1 2</pinfo><pinfo name="locale">en-US</pinfo>
  <pinfo name="company" encoded="true">0JrQvdC40LPQuA==</pinfo>
  <pinfo name="email">ann@a.example</pinfo><pinfo name="country">RU</pinfo>
  <pinfo name="zip">191186</pinfo><pinfo name="state">SPB</pinfo>
  <permission name="manage_dns" value="false"/><permission name="cp_access" value="true"/>
  <permission name="multiple-sessions" value="false"/><permission name="manage_log"/>
  <preferences><pinfo name="locale">ru-RU</pinfo><pinfo name="state">LEN</pinfo></preferences>
  <properties><password type="plain">secret-1</password></properties>
</domainuser>
<limits-and-permissions>
  <limit name="disk_space">0100</limit><limit name="disk_space_soft">abc</limit>
  <limit name="expiration">1893456000</limit><limit name="max_traffic">-1</limit>
  <limit name="max_traffic_soft">07</limit><limit name="mbox_quota">+5</limit>
  <limit name="max_box">007</limit>
</limits-and-permissions>
<properties>
  <status><disabled-by name="client"/></status>
  <ip><ip-address>192.0.2.1</ip-address><ip-type>shared</ip-type></ip>
</properties>
<preferences><default-domain/></preferences>)"),
     .calls =
         R"(domain --create a.example -owner bob -notify false -guid g-a -creation-date 2010-01-02
domain_pref --update a.example -disk_space 100 -disk_space_soft abc -expiration 1893456000 -max_traffic -1 -max_traffic_soft 7 -mbox_quota 5 -max_box 007
QRD_PASSWORD=secret-1 domadmin --update a.example -passwd '' -uid 501 -ownership true -lock-screen false -max-button-length 18 -multiple-sessions false -status true -manage_dns false -manage_log true -email ann@a.example -pname 'Ann A.' -phone '1 2' -company Книги -country RU -zip 191186 -state LEN -locale ru-RU
domadmin --update a.example -skin winter
domain_pref --update a.example -www false
maillist --update-service a.example -status admin
traffic --add-batch a.example <<<'1 http\n'
domain_pref --update a.example -expiration 1893456000
domain --update a.example -status client
domain --update a.example -guid g-a
)"},
    {.name = "WithNothing",
     .before = kBob,
     .dump = ofBob("",
                   "<domainuser status='false'><password type='encrypted'>$1$a</password>"
                   "</domainuser><limits-and-permissions/><properties/>"),
     .calls = kCreate +
              "QRD_CRYPTED_PASSWORD='$1$a' domadmin --update a.example -passwd '' -status false\n" +
              kWww},
};
INSTANTIATE_TEST_SUITE_P(Created, Domain, ::testing::ValuesIn(kWhole), restoreName);

struct Word {
    const char* name;
    std::string attributes;
    std::string calls;
};
void PrintTo(const Word& word, std::ostream* out) { *out << word.name; }

class DomainWord : public ::testing::TestWithParam<Word> {};

const std::string kUpdate = "domain --update a.example -guid g-a -creation-date 2010-01-02\n";
const std::string kSettings =
    "domain_pref --update a.example -max_box 1 -expiration 9\n" + kWww +
    "traffic --add-batch a.example <<<1\ndomain_pref --update a.example -expiration 9\n";
const std::string kMarks =
    "domain --update a.example -status enabled\ndomain --update a.example -guid g-a\n";

// Catches: a word of the accounts' rule in place of the domains' own.
TEST_P(DomainWord, DoesWhatItSays) {
    Sandbox box;
    runAndExpect(box, {.name = "",
                       .before = kExisting,
                       .options = {"--skip-xsd"},
                       .dump = ofBob("guid='g-a' cr-date='2010-01-02' " + GetParam().attributes,
                                     "<limits-and-permissions><limit name='max_box'>1</limit>"
                                     "<limit name='expiration'>9</limit></limits-and-permissions>"
                                     "<properties><status><enabled/></status></properties>"
                                     "<traffic>1</traffic>"),
                       .calls = GetParam().calls});
}

INSTANTIATE_TEST_SUITE_P(
    Existing, DomainWord,
    ::testing::Values(Word{"Update", "deployer-action='update'", kUpdate + kSettings + kMarks},
                      Word{"ChangeOwner", "deployer-action='change-owner'",
                           "domain --change-owner a.example -owner bob\n" + kUpdate + kSettings +
                               kMarks},
                      Word{"ConvertToClient", "deployer-action='convert-to-client'",
                           kUpdate + kSettings + kMarks},
                      Word{"ConvertToReseller", "deployer-action='convert-to-reseller'",
                           kUpdate + kSettings + kMarks},
                      Word{"Auxiliary", "deployer-action='auxiliary'", kMarks},
                      Word{"RejectedDelete", "deployer-action='rejected-delete'", kMarks},
                      Word{"Unknown", "deployer-action='unheard-of'", kMarks},
                      Word{"Empty", "deployer-action=''", kMarks},
                      Word{"Delete", "deployer-action='delete'", "domain --remove a.example\n"}),
    [](const auto& row) { return std::string(row.param.name); });

const std::string kLimitsAndStatus =
    "<limits-and-permissions><limit name='max_box'>1</limit><limit name='expiration'>9</limit>"
    "<limit name='max_db'>2</limit></limits-and-permissions>"
    "<properties><status><enabled/></status></properties><traffic>1</traffic>";
const std::string kLimits = "domain_pref --update a.example -max_box 1 -expiration 9 -max_db 2\n";
const std::string kExpiration = "domain_pref --update a.example -expiration 9\n";
const std::string kStatus = "domain --update a.example -status enabled\n";
const std::string kTraffic = "traffic --add-batch a.example <<<1\n";

// Catches: a failure that costs more than it may, or passes where it must be told.
const Restore kFailures[] = {
    {.name = "CreateCostsTheDomain",
     .before = kExisting,
     .dump = ofBob("guid='g-a'", kLimitsAndStatus),
     .calls = "domain --create a.example -owner bob -notify false -guid g-a\n",
     .result = inBob(failedDomain(
         "a.example",
         failedCommand("domain", "--create a.example -owner bob -notify false -guid g-a",
                       "domain: domain a.example exists already")))},
    {.name = "RefusedLimitsAreTriedOneByOne",
     .before = kBob,
     .faults = "match domain_pref --update a.example -max_box: stderr 'no box'; exit 5\n",
     .dump = ofBob("", kLimitsAndStatus),
     .calls = kCreate + kLimits + "domain_pref --update a.example -max_box 1\n" + kExpiration +
              "domain_pref --update a.example -max_db 2\n" + kWww + kTraffic + kExpiration +
              kStatus,
     .result = inDomain(failedCommand(
         "domain_pref", "--update a.example -max_box 1 -expiration 9 -max_db 2", "no box", 5))},
    {.name = "WwwCostsTheRestAndLeavesStatusAndExpiration",
     .before = kBob,
     .faults = "match domain_pref --update a.example -www: exit 5\n",
     .dump = ofBob("guid='g-a'", kLimitsAndStatus),
     .calls = "domain --create a.example -owner bob -notify false -guid g-a\n" + kLimits + kWww +
              kStatus + kExpiration,
     .result = inBob(failedDomain(
         "a.example", failedCommand("domain_pref", "--update a.example -www true", "", 5)))},
    {.name = "ExpirationCostsTheDomain",
     .before = kBob,
     .faults = "match domain_pref --update a.example -expiration: exit 5\n"
               "match domain --update a.example -status: exit 6\n",
     .dump = ofBob("guid='g-a'", kLimitsAndStatus),
     .calls = "domain --create a.example -owner bob -notify false -guid g-a\n" + kLimits + kWww +
              kTraffic + kExpiration + kStatus + kExpiration,
     .result = inBob(failedDomain(
         "a.example", failedCommand("domain_pref", "--update a.example -expiration 9", "", 5)))},
    {.name = "StatusIsDroppedAndTrafficIsTold",
     .before = kBob,
     .faults = "match domain --update a.example -status: exit 6\n"
               "match traffic: stderr 'no rows\\n'; exit 7\n",
     .dump = ofBob("guid='g-a'", kLimitsAndStatus),
     .calls = "domain --create a.example -owner bob -notify false -guid g-a\n" + kLimits + kWww +
              kTraffic + kExpiration + kStatus + "domain --update a.example -guid g-a\n",
     .result = inDomain(failedCommand("traffic", "--add-batch a.example", "no rows", 7, "1"))},
    {.name = "GuidIsNoFailureOfTheDomain",
     .before = kBob,
     .faults = "match domain --update a.example -guid: exit 5\n",
     .dump = ofBob("guid='g-a'"),
     .calls = "domain --create a.example -owner bob -notify false -guid g-a\n" + kWww +
              "domain --update a.example -guid g-a\n",
     .result = inBob(failedCommand("domain", "--update a.example -guid g-a", "", 5))},
    {.name = "MailListServiceCostsItsLists",
     .before = kBob,
     .dump = ofBob("", "<maillists><maillist name='news'/></maillists><traffic>1</traffic>"),
     .calls = kCreate + kWww + kTraffic,
     .result = inDomain(
         missingNode("status", "/migration-dump/admin/clients/client/domains/domain/maillists"))},
};
INSTANTIATE_TEST_SUITE_P(Failing, Domain, ::testing::ValuesIn(kFailures), restoreName);

// A conversion error is no failure of an object: it ends the run, and what was suspended is
// resumed all the same.
TEST(DomainLimit, ThatIsNoNumberEndsTheRun) {
    Sandbox box;
    prepare(box,
            ofBob("deployer-action='update'",
                  "<limits-and-permissions><limit name='max_box'>1"
                  "</limit><limit name='disk_space'>abc</limit>"
                  "</limits-and-permissions>"),
            kExisting);
    box.failsWith(1, "Uncaught std::exception: ", deployOptions({"--suspend"}));
    const std::string handler =
        "bare xt-engine-zelvorun /opt/qrd/admin/vlib/backup/suspend_handler/"
        "SuspendHandlerRunner.php ";
    EXPECT_EQ(callsOf(box), handler + "suspend a.example " + Sandbox::sessionPath() +
                                "\ndomain --update a.example\n" + handler + "unsuspend a.example " +
                                Sandbox::sessionPath() + "\n");
    expectResult(box, result("", "error"));
}

// ---- the domain's administrator ----

const std::string kAdministrator = R"(
<domainuser uid="501" max-button-length="18" contact="Ann" skin="winter">
  <password type="plain">secret-1</password><permission name="manage_dns"/>
  <pinfo name="email">ann@a.example</pinfo><pinfo name="company">A</pinfo>
  <pinfo name="phone">1</pinfo><pinfo name="country">DE</pinfo><pinfo name="zip">80331</pinfo>
  <pinfo name="locale">de-DE</pinfo>
</domainuser>)";

// The calls from the one with all options on, and whether a failure of the part ends the others.
struct Part {
    std::string options;
    bool endsAll;
};
const Part kParts[] = {
    {"-passwd '' -uid 501", true},
    {"-max-button-length 18 -status true -manage_dns true", false},
    {"-email ann@a.example", true},
    {"-pname Ann", true},
    {"-company A", false},
    {"-phone 1", false},
    {"-country DE -zip 80331", false},
    {"-locale de-DE", false},
};

std::string asInMessage(const std::string& options) {
    return std::regex_replace(options, std::regex("''"), "");
}

// Catches: a part that is lost with the one before it, that travels along with the next one, or
// that is told twice.
TEST(DomainAdministrator, LosesOnlyThePartThatIsRefused) {
    std::string all;
    for (const Part& part : kParts) all += " " + part.options;
    const std::string update = "domadmin --update a.example";
    const auto call = [&](const std::string& options) {
        const std::string password =
            options.find("-passwd") == std::string::npos ? "" : "QRD_PASSWORD=secret-1 ";
        return password + update + " " + options + "\n";
    };
    // The refused part; behind the last one none is, which leaves the skin to be refused.
    for (std::size_t refused = 0; refused <= std::size(kParts); ++refused) {
        SCOPED_TRACE(refused);
        std::string calls = kCreate + call(all.substr(1));
        std::string told =
            failedCommand("domadmin", "--update a.example" + asInMessage(all), "", 5);
        bool goesOn = true;
        for (std::size_t part = 0; part < std::size(kParts) && goesOn; ++part) {
            calls += call(kParts[part].options);
            if (part == refused) {
                told += failedCommand(
                    "domadmin", "--update a.example " + asInMessage(kParts[part].options), "", 6);
                goesOn = !kParts[part].endsAll;
            }
        }
        if (goesOn) calls += update + " -skin winter\n";
        Sandbox box;
        runAndExpect(
            box, {.name = "",
                  .before = kBob,
                  .faults = "call 2: exit 5\ncall " + std::to_string(refused + 3) + ": exit 6\n",
                  .dump = ofBob("", kAdministrator),
                  .calls = calls + kWww,
                  .result = inDomain(told)});
    }
}

// ---- suspension ----

std::string handler(const std::string& word) {
    return "bare xt-engine-zelvorun /opt/qrd/admin/vlib/backup/suspend_handler/"
           "SuspendHandlerRunner.php " +
           word + " a.example " + Sandbox::sessionPath() + "\n";
}

std::string resumeFailed(const std::string& error, int code) {
    return message("ResumeDomainFailed",
                   {"DomainSuspender::reportResumeFailure", "./restore/domain_suspender.cpp"},
                   "The resume of domain failed. The domain may be unavailable after restore. "
                   "Please, resume it manually. Error message: ExecCmd::Failed: Execution of "
                   "/opt/qrd/bin/xt-engine-zelvorun /opt/qrd/admin/vlib/backup/suspend_handler/"
                   "SuspendHandlerRunner.php unsuspend a.example " +
                       Sandbox::sessionPath() + " failed with return code " + std::to_string(code) +
                       ".\n" + (error.empty() ? "" : "Stderr is\n" + error + "\n") +
                       " [./exec/exec_cmd.cpp:N]");
}

// Catches: a domain that stays suspended on one of the ways out, and one that is suspended before
// it exists.
const Restore kSuspended[] = {
    {.name = "NewDomainIsNot",
     .before = kBob,
     .options = {"--suspend"},
     .dump = ofBob(""),
     .calls = kCreate + kWww},
    {.name = "WhileItIsUpdated",
     .before = kExisting,
     .options = {"--suspend"},
     .dump = ofBob("deployer-action='update' guid='g-a'"),
     .calls = handler("suspend") + "domain --update a.example -guid g-a\n" + kWww +
              "domain --update a.example -guid g-a\n" + handler("unsuspend")},
    {.name = "DeletedDomainCannotBeResumed",
     .before = kExisting,
     .options = {"--suspend"},
     .dump = ofBob("deployer-action='delete'"),
     .calls = handler("suspend") + "domain --remove a.example\n" + handler("unsuspend"),
     .result = inDomain(resumeFailed("xt-engine-zelvorun: domain a.example does not exist", 1))},
    {.name = "AuxiliaryDomainToo",
     .before = kExisting,
     .faults = "match xt-engine-zelvorun * unsuspend: exit 5\n",
     .options = {"--suspend"},
     .dump = ofBob("deployer-action='auxiliary'"),
     .calls = handler("suspend") + handler("unsuspend"),
     .result = inDomain(resumeFailed("", 5))},
    {.name = "FailedUpdateResumes",
     .before = kExisting,
     .faults = "match domain --update: exit 5\n",
     .options = {"--suspend"},
     .dump = ofBob("deployer-action='update'"),
     .calls = handler("suspend") + "domain --update a.example\n" + handler("unsuspend"),
     .result =
         inBob(failedDomain("a.example", failedCommand("domain", "--update a.example", "", 5)))},
    {.name = "FailedContentsResume",
     .before = kExisting,
     .faults = "match domain_pref: exit 5\n",
     .options = {"--suspend"},
     .dump = ofBob("deployer-action='change-owner'"),
     .calls = handler("suspend") + "domain --change-owner a.example -owner bob\n" +
              "domain --update a.example\n" + kWww + handler("unsuspend"),
     .result = inBob(failedDomain(
         "a.example", failedCommand("domain_pref", "--update a.example -www true", "", 5)))},
    {.name = "FailedGuidResumes",
     .before = kExisting,
     .faults = "match domain --update: exit 5\n",
     .options = {"--suspend"},
     .dump = ofBob("deployer-action='auxiliary' guid='g-a'"),
     .calls = handler("suspend") + "domain --update a.example -guid g-a\n" + handler("unsuspend"),
     .result = inBob(failedCommand("domain", "--update a.example -guid g-a", "", 5))},
    {.name = "WhatWasNotSuspendedIsNotResumed",
     .before = kExisting,
     .faults = "match xt-engine-zelvorun: exit 5\n",
     .options = {"--suspend"},
     .dump = ofBob("deployer-action='auxiliary' guid='g-a'"),
     .calls = handler("suspend") + "domain --update a.example -guid g-a\n"},
};
INSTANTIATE_TEST_SUITE_P(Suspended, Domain, ::testing::ValuesIn(kSuspended), restoreName);

// ---- domain templates ----

constexpr char kGold[] =
    "client --create bob\ndomain_template --create gold -hosting true -webmail true\n"
    "domain_template --create slim -hosting false\n"
    "domain --create a.example -guid g-a\n";
constexpr char kTemplates[] =
    "client --create bob\ndomain_template --create gold -hosting true\n"
    "domain_template --create slim -hosting false\n";

const std::string kSysuser =
    "<sysuser name='Ann' shell='/usr/bin/bash' quota='7'><password type='plain'>secret-1"
    "</password></sysuser>";
const std::string kFpuser =
    "<fpuser name='fp ann'><password type='encrypted'>$1$fp</password></fpuser>";

std::string phosting(const std::string& preferences) {
    return "<phosting><preferences>" + preferences + "</preferences></phosting>";
}

const std::string kPhosting =
    notSupported("phosting", {"tDomainDeployer::deployHosting", "./restore/domain_deployer.cpp"});

std::string templated(const std::string& name, const std::string& options) {
    return "domain --create a.example -owner bob -notify false -template " + name + " -force" +
           options + "\n";
}

// Catches: options of the dump where the template's hold, a hosting that the template lacks, and
// a domain that is created although it does not fit.
const Restore kTemplated[] = {
    {.name = "WithHosting",
     .before = kTemplates,
     .options = {"--domain-template", "gold"},
     .dump =
         ofBob("guid='g-a' cr-date='2010-01-02'", kLimitsAndStatus + phosting(kFpuser + kSysuser)),
     .calls = "domain_template -x gold\ndomain -s\nQRD_PASSWORD=secret-1 "
              "domain --create a.example -owner bob -notify false -guid g-a -creation-date "
              "2010-01-02 -template gold -force -login Ann -passwd '' -shell /bin/bash "
              "-fplogin 'fp ann' -fppasswd '$1$fp'\n" +
              kWww + kTraffic + kStatus + "domain --update a.example -guid g-a\n",
     .result = inDomain(kPhosting)},
    {.name = "SysuserStandsInForAMissingFpuser",
     .before = kTemplates,
     .options = {"--domain-template", "gold", "--notify"},
     .dump = ofBob("", phosting("<sysuser name='ann'><password type='plain'>secret-1</password>"
                                "</sysuser>")),
     .calls = "domain_template -x gold\nQRD_PASSWORD=secret-1 domain --create a.example -owner bob "
              "-template gold -force -login ann -passwd '' -fplogin ann -fppasswd secret-1\n" +
              kWww,
     .result = inDomain(kPhosting)},
    {.name = "WithHostingAndNoSysuser",
     .before = kTemplates,
     .options = {"--domain-template", "gold"},
     .dump = ofBob("", phosting(kFpuser)),
     .calls = "domain_template -x gold\n",
     .result = inBob(failedDomain(
         "a.example", missingNode("phosting/preferences/sysuser",
                                  "/migration-dump/admin/clients/client/domains/domain")))},
    {.name = "WithHostingAndADomainWithout",
     .before = kGold,
     .options = {"--domain-template", "gold", "--suspend"},
     .dump = ofBob("deployer-action='update'", kLimitsAndStatus),
     .calls = "domain_template -x gold\n",
     .result = inBob(message(
         "SkipDomainDueToTemplateHosting",
         {"tDomainDeployer::applyTemplateRules", "./restore/domain_deployer.cpp"},
         "Domain a.example has not enabled hosting, but domain template you trying to apply has. "
         "This situation can not be resolved automatically. Please ether create physical hosting "
         "on the domain or use domain template without hosting disabled, and migrate this domain "
         "again"))},
    {.name = "WithoutHosting",
     .before = kTemplates,
     .options = {"--domain-template", "slim"},
     .dump = ofBob("", phosting(kSysuser)),
     .calls =
         "domain_template -x slim\n" + templated("slim", " -fplogin Ann -fppasswd secret-1") + kWww,
     .result = inDomain(kPhosting)},
    {.name = "NoFrontpageLoginNoDomain",
     .before = kTemplates,
     .options = {"--domain-template", "slim"},
     .dump = ofBob("", kLimitsAndStatus),
     .calls = "domain_template -x slim\n" + kStatus,
     .result = inBob(failedDomain(
         "a.example", missingNode("phosting/preferences/sysuser",
                                  "/migration-dump/admin/clients/client/domains/domain")))},
    {.name = "UpdateReadsNoLimits",
     .before = kGold,
     .faults = "match domain_pref --update a.example -www: exit 5\n",
     .options = {"--domain-template", "slim"},
     .dump = ofBob("deployer-action='update'", kLimitsAndStatus),
     .calls = "domain_template -x slim\ndomain --update a.example\n" + kWww + kStatus,
     .result = inBob(failedDomain(
         "a.example", failedCommand("domain_pref", "--update a.example -www true", "", 5)))},
    {.name = "UnknownTemplate",
     .before = kTemplates,
     .options = {"--domain-template", "none"},
     .dump = ofBob(""),
     .calls = "domain_template -x none\n",
     .result =
         inBob(message("AssertionFailed", {"tXmlDocument::tXmlDocument", "./xml/xml_document.cpp"},
                       "Assertion failed: content.size()"))},
};
INSTANTIATE_TEST_SUITE_P(Templated, Domain, ::testing::ValuesIn(kTemplated), restoreName);

// ---- elements that no deployer takes yet ----

std::string in(const std::string& what, const std::string& file, const std::string& function) {
    return notSupported(what, {function, "./restore/" + file + ".cpp"});
}

std::string ofDomain(const std::string& what, const std::string& function) {
    return in(what, "domain_deployer", "tDomainDeployer::" + function);
}

constexpr char kHoldings[] = R"(
<certificates><certificate name="c"/></certificates>
<phosting/><shosting>http://x.example</shosting><tomcat/><fhosting/>
<maillists><status><enabled/></status><maillist name="m1"/><maillist name="m2"/>
  <content><cid type="domainmaillist"/></content></maillists>
<databases><database name="d1"/><database name="d2"/></databases><mailsystem/>
<preferences><custom-button/><domain-alias name="b.example"/></preferences>
<properties><dns-zone/></properties>)";

// Catches: an element that is passed over in silence.
const Restore kMissing[] = {
    {.name = "OfADomain",
     .before = kBob,
     .options = {"--skip-xsd"},
     .dump = ofBob("", kHoldings),
     .calls = kCreate + kWww + "maillist --update-service a.example -status enabled\n",
     .result = inDomain(
         ofDomain("mailsystem", "deployMailSystem") + ofDomain("database", "deployDatabases") +
         ofDomain("database", "deployDatabases") + ofDomain("domain-alias", "deployServices") +
         ofDomain("maillist", "deployMailLists") + ofDomain("maillist", "deployMailLists") +
         ofDomain("content of maillists", "deployMailLists") +
         ofDomain("tomcat", "deployServices") + ofDomain("phosting", "deployHosting") +
         ofDomain("dns-zone", "deployDnsZone") + ofDomain("certificate", "deployExtras") +
         ofDomain("custom-button", "deployExtras"))},
    {.name = "OfAnAuxiliaryDomain",
     .before = kExisting,
     .options = {"--skip-xsd"},
     .dump = ofBob("deployer-action='auxiliary'", kHoldings),
     .calls = "",
     .result = inDomain(
         ofDomain("mailsystem", "deployMailSystem") + ofDomain("database", "deployDatabases") +
         ofDomain("database", "deployDatabases") + ofDomain("phosting", "deployHosting"))},
    {.name = "OfAnAccountAndTheRoot",
     .before = "reseller --create rita\n",
     .options = {"--skip-xsd"},
     .dump =
         R"(<database name="d"/><mailname name="m"/><reseller name="rita" deployer-action="update">
<content><cid type="skeleton"/></content><sapp-pool><sapp-item/></sapp-pool>
<preferences><client-template name="t"/><custom-button/><domain-template name="t"/></preferences>
<clients><client name="rita" deployer-action="auxiliary">
  <sapp-pool><sapp-item/></sapp-pool></client></clients>
</reseller><server/>)",
     .calls = "reseller --update rita -login rita\n",
     .result = result(
         in("server", "restorer", "ZelvoDumpRestorer::deployServer") +
         object("rita", "reseller",
                in("sapp-item", "client_deployer", "ClientDeployer::deployProperties") +
                    in("domain-template", "client_deployer", "ClientDeployer::deployProperties") +
                    in("custom-button", "client_deployer", "ClientDeployer::deployProperties") +
                    in("skeleton", "client_deployer", "ClientDeployer::deployClientData") +
                    in("client-template", "reseller_deployer", "ResellerDeployer::operator()")) +
         in("mailname", "restorer", "ZelvoDumpRestorer::deployMailname") +
         in("database", "restorer", "ZelvoDumpRestorer::deployDatabase"))},
};
INSTANTIATE_TEST_SUITE_P(WithoutADeployer, Domain, ::testing::ValuesIn(kMissing), restoreName);

}  // namespace
