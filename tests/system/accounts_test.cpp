// Accounts through the real program: what each word does to a client and a reseller, with all that
// an account can hold, and what the panel's utilities are told of it.

#include "dumps.h"

namespace {

std::string clients(const std::string& inside) {
    return "<admin><clients>" + inside + "</clients></admin>";
}

// A reseller who is only the way to the clients below.
std::string belowRita(const std::string& inside) {
    return "<admin><resellers><reseller name='rita' deployer-action='auxiliary'><clients>" +
           inside + "</clients></reseller></resellers></admin>";
}

const std::string kPassword = "<properties><password type='plain'>secret-1</password></properties>";

class Account : public ::testing::TestWithParam<Restore> {};

// Catches: an option missing, misspelt or in a wrong place, a command too many, a utility that is
// not the account's own.
TEST_P(Account, IsRestoredByTheseCommands) {
    Sandbox box;
    runAndExpect(box, GetParam());
}

const Restore kCreations[] = {
    {.name = "ClientWithEverything",
     .before = "ipmanage -c 192.0.2.1\nipmanage -c 192.0.2.2\n",
     .dump = clients(R"(
<client name="bob" contact="Bob B." ownership="true" uid="1001" guid="g-bob" cr-date="2010-01-02"
        skin="winter" max-button-length="24" lock-screen="false">
  <traffic>1 http 2
3 ftp 4
</traffic>
  <ip_pool>
    <ip><ip-type>shared</ip-type><ip-address>192.0.2.1</ip-address></ip>
    <ip><ip-address>192.0.2.2</ip-address><ip-type>exclusive</ip-type></ip>
  </ip_pool>
  <limits-and-permissions>
    <permission name="multiple-sessions" value="false"/>
    <limit name="disk_space">-1</limit>
    <permission name="create_domains"/>
    <limit name="max_dom">0100</limit>
    <permission name="manage_dns" value="false"/>
    <permission name="cp_access" value="true"/>
    <limit name="mbox_quota">9007199254740993</limit>
  </limits-and-permissions>
  <properties>
    <wz-reseller enabled="true">
      <wz-client-login>bob-wz</wz-client-login><wz-reseller-id>7</wz-reseller-id>
    </wz-reseller>
    <status><disabled-by name="admin"/><disabled-by name="client"/></status>
    <password type="plain">it's me</password>
  </properties>
  <pinfo name="locale">en-US</pinfo><pinfo name="country">FR</pinfo>
  <preferences>
    <pinfo name="zip">191186</pinfo>
    <pinfo name="company" encoded="true">0JrQvdC40LPQuA==</pinfo>
    <pinfo name="locale">ru-RU</pinfo>
    <pinfo name="country">RU</pinfo>
    <pinfo name="email">bob@b.example</pinfo>
    <pinfo name="state">SPB</pinfo>
    <pinfo name="city">St. P &amp; b</pinfo>
  </preferences>
</client>)"),
     .calls =
         R"(QRD_PASSWORD='it\'s me' client --create bob -name 'Bob B.' -notify false -passwd '' -email bob@b.example -creation-date 2010-01-02 -guid g-bob -owner admin
QRD_PASSWORD='it\'s me' client --update bob -login bob -name 'Bob B.' -passwd '' -email bob@b.example -creation-date 2010-01-02 -uid 1001 -ownership true -guid g-bob
client --update bob -disk_space -1 -max_dom 100 -mbox_quota 9007199254740993
client --update bob -status admin,client
client --update bob -company Книги -city 'St. P & b' -country RU -zip 191186 -state SPB
client_pref --update bob -locale ru-RU
client_pref --update bob -skin winter
client_pref --update bob -max-button-length 24 -lock-screen false -create_domains true -manage_dns false -cp_access true -multiple-sessions false
ip_pool --add 192.0.2.1 -type shared -owner bob
ip_pool --add 192.0.2.2 -type exclusive -owner bob
traffic --add-batch-user bob <<<'1 http 2\n3 ftp 4\n'
client --update bob -wz-user true -wz-client-id 7 -wz-client-login bob-wz
)"},
    {.name = "ResellerWithAllBelow",
     .dump = R"(<admin><resellers><reseller name="rita" guid="g-rita" skin="autumn">
  <clients><client name="bob">
    <domains><domain name="b.example"/></domains>
    <properties><password type="plain" encoding="base64">c2VjcmV0LWJvYg==</password></properties>
  </client></clients>
  <domains><domain name="r.example"/></domains>
  <properties>
    <password type="encrypted">$1$rita</password>
    <status><disabled-by name="admin"/><enabled/></status><wz-reseller/>
  </properties>
  <limits-and-permissions><limit name="max_cl">3</limit><permission name="multiple-sessions"/>
  </limits-and-permissions>
  <preferences><pinfo name="locale"/><pinfo name="phone">1 2</pinfo></preferences>
  <pinfo name="locale">de-DE</pinfo><pinfo name="country">DE</pinfo><pinfo name="zip">80331</pinfo>
</reseller></resellers></admin>)",
     .calls =
         R"(QRD_CRYPTED_PASSWORD='$1$rita' reseller --create rita -name rita -notify false -passwd '' -guid g-rita -owner admin
QRD_CRYPTED_PASSWORD='$1$rita' reseller --update rita -login rita -passwd '' -guid g-rita
reseller --update rita -max_cl 3
reseller --update rita -status enabled
reseller --update rita -phone '1 2' -country DE -zip 80331
reseller_pref --update rita -locale de-DE
reseller_pref --update rita -skin autumn
reseller_pref --update rita -multiple-sessions true
reseller --update rita -wz-user false
domain --create r.example -owner rita -notify false
domain_pref --update r.example -www true
QRD_PASSWORD=secret-bob client --create bob -name bob -notify false -passwd '' -owner rita
QRD_PASSWORD=secret-bob client --update bob -login bob -passwd ''
domain --create b.example -owner bob -notify false
domain_pref --update b.example -www true
)"},
    {.name = "NothingToSayIsNotRun",
     .dump = clients(R"(<client name="bob" contact="Bob" lock-screen="true">
  <preferences><pinfo name="email">b@b.example</pinfo><pinfo name="zip">1</pinfo>
    <pinfo name="locale"/></preferences>
  <properties><password type="encrypted"/></properties>
  <limits-and-permissions/><ip_pool/><domains/></client>)"),
     .calls =
         R"(QRD_CRYPTED_PASSWORD='' client --create bob -name Bob -notify false -passwd '' -email b@b.example -owner admin
QRD_CRYPTED_PASSWORD='' client --update bob -login bob -name Bob -passwd '' -email b@b.example
)"},
};
INSTANTIATE_TEST_SUITE_P(Created, Account, ::testing::ValuesIn(kCreations), restoreName);

const Restore kWords[] = {
    {.name = "Update",
     .before = "client --create bob\nclient --create ann\n",
     .dump = clients(R"(<client name="bob" deployer-action="update">
  <properties><password type="encrypted">$1$bob</password><status/>
    <wz-reseller enabled="false"><wz-reseller-id>8</wz-reseller-id></wz-reseller></properties>
</client><client name="ann" deployer-action="update" uid="12"/>)"),
     .calls = R"(QRD_CRYPTED_PASSWORD='$1$bob' client --update bob -login bob -passwd ''
client --update bob -status ''
client --update bob -wz-user false -wz-client-id 8
client --update ann -login ann -uid 12
)"},
    {.name = "DeleteStillWalksTheDomains",
     .before = "client --create bob\ndomain --create b.example -owner bob\n",
     .dump = clients(R"(<client name="bob" deployer-action="delete">
  <limits-and-permissions><limit name="max_dom">1</limit></limits-and-permissions>
  <domains><domain name="b.example" deployer-action="update"/></domains></client>)"),
     .calls = "client --remove bob\ndomain --update b.example\n",
     .result = result(object(
         "bob", "client",
         failedDomain("b.example", failedCommand("domain", "--update b.example",
                                                 "domain: domain b.example does not exist"))))},
    {.name = "DeleteResellerWalksTheClients",
     .before = "reseller --create rita\n",
     .dump = R"(<admin><resellers><reseller name="rita" deployer-action="delete">
  <clients><client name="bob" deployer-action="delete"/></clients></reseller></resellers></admin>)",
     .calls = "reseller --remove rita\nclient --remove bob\n",
     .result =
         result(object("bob", "client",
                       failedClient("bob", failedCommand("client", "--remove bob",
                                                         "client: client bob does not exist"))))},
    {.name = "AuxiliaryAndRejectedDelete",
     .before = "domain --create b.example\n",
     .dump = R"(<admin><resellers><reseller name="rita" deployer-action="rejected-delete" skin="x">
  <preferences><client-template name="t"/></preferences>
  <limits-and-permissions><limit name="max_cl">1</limit></limits-and-permissions>
  <clients><client name="bob" deployer-action="auxiliary">)" +
             kPassword + R"(<traffic>1</traffic>
    <domains><domain name="b.example" deployer-action="auxiliary" guid="g-b"/></domains>
  </client></clients></reseller></resellers></admin>)",
     .calls = "domain --update b.example -guid g-b\n"},
    {.name = "ChangeOwner",
     .before = "reseller --create rita\nclient --create bob\ndomain --create b.example\n",
     .dump = belowRita(R"(<client name="bob" deployer-action="change-owner">
  <limits-and-permissions><limit name="max_dom">1</limit></limits-and-permissions>
  <domains><domain name="b.example" deployer-action="change-owner"/></domains></client>)"),
     .calls = R"(client --change-owner bob -owner rita
client --update bob -login bob
client --update bob -max_dom 1
domain --change-owner b.example -owner bob
domain --update b.example
domain_pref --update b.example -www true
)"},
    {.name = "ConvertToClient",
     .before = "reseller --create rita\nreseller --create bob\n",
     .dump = belowRita(R"(<client name="bob" contact="Bob" deployer-action="convert-to-client">
  <properties><password type="plain">secret-1</password><status><enabled/></status></properties>
</client>)"),
     .calls = R"(reseller --convert-to-client bob
client --change-owner bob -owner rita
client --update bob -status enabled
)"},
    {.name = "ConvertToReseller",
     .before = "client --create bob\n",
     .dump = R"(<admin><resellers><reseller name="bob" deployer-action="convert-to-reseller">
  <preferences><client-template name="t"/></preferences>
  <properties><status><enabled/></status></properties></reseller></resellers></admin>)",
     .calls = "client --convert-to-reseller bob\nreseller --update bob -status enabled\n"},
    {.name = "UnknownWordSetsThePropertiesAlone",
     .before = "client --create bob\n",
     .options = {"--skip-xsd"},
     .dump = clients("<client name='bob' deployer-action='unheard-of'>" + kPassword +
                     "<limits-and-permissions><limit name='max_dom'>1</limit>"
                     "</limits-and-permissions></client>"),
     .calls = "client --update bob -max_dom 1\n"},
};
INSTANTIATE_TEST_SUITE_P(Words, Account, ::testing::ValuesIn(kWords), restoreName);

const Restore kFailures[] = {
    {.name = "CreateEndsTheAccountAndNotItsDomains",
     .before = "client --create bob\n",
     .dump = clients("<client name='bob'>" + kPassword +
                     "<traffic>1</traffic><domains><domain name='b.example'/></domains></client>"),
     .calls = "QRD_PASSWORD=secret-1 client --create bob -name bob -notify false -passwd '' "
              "-owner admin\n"
              "domain --create b.example -owner bob -notify false\n"
              "domain_pref --update b.example -www true\n",
     .result = result(object(
         "bob", "client",
         failedClient(
             "bob",
             failedCommand("client", "--create bob -name bob -notify false -passwd  -owner admin",
                           "client: an account bob exists already"))))},
    {.name = "HalfAConversionEndsTheAccount",
     .before = "reseller --create bob\n",
     .dump = belowRita("<client name='bob' deployer-action='convert-to-client'>"
                       "<traffic>1</traffic></client>"),
     .calls = "reseller --convert-to-client bob\nclient --change-owner bob -owner rita\n",
     .result = result(
         object("rita", "reseller",
                object("bob", "client",
                       failedClient("bob", failedCommand("client", "--change-owner bob -owner rita",
                                                         "client: owner rita does not exist")))))},
    {.name = "UnknownPasswordTypeEndsTheAccount",
     .options = {"--skip-xsd"},
     .dump = clients("<client name='bob'><properties><password type='md5'>secret-2</password>"
                     "</properties></client>"),
     .calls = "",
     .result = result(object(
         "bob", "client",
         failedClient("bob", message("AssertionFailed", {"passwd::passwd", "./restore/passwd.cpp"},
                                     "Assertion failed: type &amp; (PLAIN | ENCRYPTED)"))))},
    {.name = "LimitThatIsNoNumberCostsTheLimits",
     .before = "client --create bob\n",
     .dump =
         clients(R"(<client name="bob" deployer-action="update" skin="x"><limits-and-permissions>
  <limit name="max_dom">1</limit><limit name="max_box">abc</limit><permission name="manage_dns"/>
</limits-and-permissions></client>)"),
     .calls = R"(client --update bob -login bob
client_pref --update bob -skin x
client_pref --update bob -manage_dns true
)",
     .result =
         result(object("bob", "client",
                       message("AssertionFailed",
                               {"ClientDeployer::deployLimits", "./restore/client_deployer.cpp"},
                               "Assertion failed: The value of the limit 'Client bob "
                               "max_box' is not a number: 'abc'")))},
    {.name = "SkinIsNoFailureAndEachAddressHasItsOwn",
     .before = "client --create bob\nipmanage -c 192.0.2.1\n",
     .faults = "match client_pref --update bob -skin: exit 5\n",
     .dump = clients(R"(<client name="bob" deployer-action="update" skin="x"><traffic>7</traffic>
  <ip_pool><ip><ip-address>192.0.2.9</ip-address><ip-type>shared</ip-type></ip>
    <ip><ip-address>192.0.2.1</ip-address><ip-type>shared</ip-type></ip></ip_pool></client>)"),
     .calls = R"(client --update bob -login bob
client_pref --update bob -skin x
ip_pool --add 192.0.2.9 -type shared -owner bob
ip_pool --add 192.0.2.1 -type shared -owner bob
traffic --add-batch-user bob <<<7
)",
     .result = result(object("bob", "client",
                             failedCommand("ip_pool", "--add 192.0.2.9 -type shared -owner bob",
                                           "ip_pool: ip 192.0.2.9 does not exist")))},
};
INSTANTIATE_TEST_SUITE_P(Failing, Account, ::testing::ValuesIn(kFailures), restoreName);

std::string livingIn(const std::string& name, const std::string& places) {
    return "<client name='" + name + "' deployer-action='update'><preferences>" + places +
           "</preferences></client>";
}

const std::string kResidents =
    clients(livingIn("c1", "<pinfo name='country'>DE</pinfo>") +
            livingIn("c2",
                     "<pinfo name='country'>US</pinfo><pinfo name='state'>NY</pinfo>"
                     "<pinfo name='zip'>10001</pinfo>") +
            livingIn("c3", "<pinfo name='country'>US</pinfo><pinfo name='state'>TX</pinfo>") +
            livingIn("c4", "<pinfo name='country'>CA</pinfo>"));
constexpr char kFourClients[] =
    "client --create c1\nclient --create c2\nclient --create c3\nclient --create c4\n";

// Catches: an administrator who is asked though nothing is missing, or twice, and a Canadian zip
// behind a foreign country.
const Restore kPlaces[] = {
    {.name = "AmericanPlaceIsFilledFromTheAdministrator",
     .before = std::string(kFourClients) + "admin --update -country CA -state ON -zip 'M5V 3L9'\n",
     .dump = kResidents,
     .calls = R"(client --update c1 -login c1
client --update c1 -country DE
client --update c2 -login c2
client --update c2 -country US -zip 10001 -state NY
client --update c3 -login c3
admin -xi
client --update c3 -country CA -zip 'M5V 3L9' -state TX
client --update c4 -login c4
client --update c4 -country CA -zip 'M5V 3L9' -state ON
)"},
    {.name = "NothingIsTakenFromAForeignAdministrator",
     .before = std::string(kFourClients) + "admin --update -country DE -state BY -zip 80331\n",
     .dump = kResidents,
     .calls = R"(client --update c1 -login c1
client --update c1 -country DE
client --update c2 -login c2
client --update c2 -country US -zip 10001 -state NY
client --update c3 -login c3
admin -xi
client --update c3 -country US -state TX
client --update c4 -login c4
client --update c4 -country CA
)"},
};
INSTANTIATE_TEST_SUITE_P(Places, Account, ::testing::ValuesIn(kPlaces), restoreName);

class EmptyPassword : public ::testing::TestWithParam<const char*> {};

// Catches: an account that nobody can enter, because it is created with one random password and
// updated with another.
TEST_P(EmptyPassword, IsReplacedByOneRandomPassword) {
    Sandbox box;
    prepare(box, clients("<client name='bob'>" + std::string(GetParam()) + "</client>"));
    box.succeeds(deployOptions());
    const std::string calls = callsOf(box);
    std::smatch found;
    ASSERT_TRUE(std::regex_search(calls, found, std::regex("^QRD_PASSWORD=([a-zA-Z0-9]{7}) ")))
        << calls;
    EXPECT_EQ(
        std::regex_replace(calls, std::regex(found[1].str()), "RANDOM"),
        "QRD_PASSWORD=RANDOM client --create bob -name bob -notify false -passwd '' "
        "-owner admin\n" +
            std::string(*GetParam() == 0 ? "client --update bob -login bob\n"
                                         : "QRD_PASSWORD=RANDOM client --update bob -login bob "
                                           "-passwd ''\n") +
            kStatistics);
    expectNoPasswordInArguments(box);
    EXPECT_NE(box.logText().find("No empty passwords are allowed for sysuser. New password will be "
                                 "generated and sent by mail to the respective user."),
              std::string::npos);
}

INSTANTIATE_TEST_SUITE_P(Account, EmptyPassword,
                         ::testing::Values("", "<properties/>",
                                           "<properties><password type='plain'/></properties>"));

}  // namespace
