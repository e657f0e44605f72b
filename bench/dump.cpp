#include "dump.h"

#include <cstdio>
#include <fstream>
#include <functional>
#include <ostream>
#include <stdexcept>

namespace bench {

namespace {

constexpr int kClients = 20;

std::string guid(int kind, int number) {
    char text[64];
    std::snprintf(text, sizeof(text), "%08x-9e37-4b1d-8c55-%012x", kind, number);
    return text;
}

std::string clientStart(int number) {
    const std::string name = "client" + std::to_string(number);
    return R"(<client name=")" + name + R"(" contact="Contact of )" + name +
           R"(" cr-date="2008-02-29" guid=")" + guid(1, number) + R"(">
  <preferences>
    <pinfo name="email">)" +
           name + R"(@example.com</pinfo>
    <pinfo name="company">Company of )" +
           name + R"(</pinfo>
    <pinfo name="country">DE</pinfo>
  </preferences>
  <properties>
    <password type="plain">secret-)" +
           name + R"(</password>
    <status><enabled/></status>
  </properties>
  <limits-and-permissions>
    <limit name="disk_space">107374182400</limit>
    <limit name="max_dom">100000</limit>
    <permission name="create_domains" value="true"/>
  </limits-and-permissions>
  <domains>
)";
}

std::string domain(int number) {
    const std::string name = "domain" + std::to_string(number) + ".example";
    return R"(    <domain name=")" + name + R"(" cr-date="2009-11-05" www="true" guid=")" +
           guid(2, number) + R"(">
      <properties>
        <status><enabled/></status>
      </properties>
      <limits-and-permissions>
        <limit name="disk_space">1073741824</limit>
        <limit name="max_traffic">10737418240</limit>
        <limit name="mbox_quota">52428800</limit>
        <limit name="max_box">25</limit>
        <limit name="max_db">5</limit>
      </limits-and-permissions>
      <domainuser contact="Keeper of )" +
           name + R"(" status="true">
        <password type="plain">secret-)" +
           std::to_string(number) + R"(</password>
        <permission name="manage_dns" value="true"/>
        <permission name="manage_log" value="false"/>
        <pinfo name="email">keeper@)" +
           name + R"(</pinfo>
        <pinfo name="company">Keepers</pinfo>
        <pinfo name="city">Bremen</pinfo>
        <pinfo name="country">DE</pinfo>
        <pinfo name="locale">de-DE</pinfo>
      </domainuser>
    </domain>
)";
}

std::string site(int number) {
    const std::string name = "site" + std::to_string(number) + ".example";
    std::string text = R"(<domain name=")" + name + R"(" guid=")" + guid(3, number) + R"(">
  <certificates><certificate name="main"><certificate-data>CERT</certificate-data>
    <private-key>KEY</private-key></certificate></certificates>
  <properties>
    <ip><ip-address>192.0.2.1</ip-address><ip-type>exclusive</ip-type></ip>
    <status><enabled/></status>
    <dns-zone serial-format="YYYYMMDDNN">
)";
    for (int record = 0; record < 10; ++record) {
        text += "      <dnsrec type=\"A\" src=\"host" + std::to_string(record) + "." + name +
                ".\" dst=\"192.0.2.1\"/>\n";
    }
    return text + R"(      <dns-zone-param name="ttl" unit="days" value="86400"/>
    </dns-zone>
  </properties>
  <phosting deployer-action="update" https="true" webstat="true" errdocs="true" wu_script="true">
    <content>
      <cid type="docroot"><content-file>site.tar</content-file></cid>
      <cid type="logs"><content-file>site.tar</content-file></cid>
    </content>
    <webusers><webuser>
      <sysuser name="customer"><password type="plain">secret-w</password></sysuser>
    </webuser></webusers>
    <subdomains><subdomain name="www"><scripting php="true"/></subdomain></subdomains>
    <limits-and-permissions><scripting php="true" cgi="true"/></limits-and-permissions>
    <preferences>
      <sysuser name="customer" quota="100"><password type="plain">secret-s</password>
        <cron>0 3 * * * true</cron></sysuser>
      <anonftp pub="true"/>
      <pdir name="private" nonssl="true">
        <pduser name="ann"><password type="plain">secret-p</password></pduser>
      </pdir>
      <logrotation enabled="true"><logrotation-period period="daily"/></logrotation>
      <webalizer hide-direct-referrer="true"/>
      <perfomance><max-connections>10</max-connections></perfomance>
    </preferences>
  </phosting>
</domain>
)";
}

// Of a domain, a client or a reseller.
std::string accountTemplate(int number) {
    const char* const kinds[] = {"domain", "client", "domain", "reseller"};
    const std::string kind = kinds[number % 4] + std::string("-template");
    return "<" + kind + " name=\"template" + std::to_string(number) + R"(" shared="true">
  <template-item name="max_box">25</template-item>
  <template-item name="max_db">5</template-item>
  <template-item name="max_traffic">10737418240</template-item>
  <template-item name="disk_space">1073741824</template-item>
  <template-item name="expiration">31536000</template-item>
</)" + kind +
           ">\n";
}

std::string appItems(int count) {
    std::string items;
    for (int number = 0; number < count; ++number) {
        items += "<sapp-item><sapp-spec><sapp-name>app" + std::to_string(number) +
                 "</sapp-name><sapp-version>1</sapp-version></sapp-spec></sapp-item>\n";
    }
    return items;
}

// A dump with this in it.
void writeFile(const std::string& path, const std::function<void(std::ostream&)>& content) {
    std::ofstream file(path);
    file << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<migration-dump>\n";
    content(file);
    file << "</migration-dump>\n";
    file.close();
    if (!file) {
        throw std::runtime_error("cannot write " + path);
    }
}

}  // namespace

void writeDump(const std::string& path, int domains) {
    writeFile(path, [domains](std::ostream& file) {
        for (int client = 0; client < kClients; ++client) {
            file << clientStart(client);
            for (int number = client; number < domains; number += kClients) {
                file << domain(number);
            }
            file << "  </domains>\n</client>\n";
        }
    });
}

void writeSitesDump(const std::string& path, int sites) {
    writeFile(path, [sites](std::ostream& file) {
        for (int number = 0; number < sites; ++number) {
            file << site(number);
        }
    });
}

void writeZoneDump(const std::string& path, int records) {
    writeFile(path, [records](std::ostream& file) {
        file << "<domain name=\"domain.example\"><properties><dns-zone>\n";
        for (int number = 0; number < records; ++number) {
            file << "  <dnsrec type=\"A\" src=\"host" << number
                 << ".domain.example.\" dst=\"192.0.2.1\"/>\n";
        }
        file << "</dns-zone></properties></domain>\n";
    });
}

void writeMailDump(const std::string& path, int users) {
    writeFile(path, [users](std::ostream& file) {
        file << "<domain name=\"domain.example\"><mailsystem><mailusers>\n";
        for (int number = 0; number < users; ++number) {
            file << "  <mailuser name=\"user" << number << R"(" mailbox-quota="50">
    <properties><password type="plain">secret-)"
                 << number << R"(</password></properties>
    <preferences><mailbox type="mdir"/><alias>alias)"
                 << number << R"(</alias><redirect>user@other.example</redirect>
      <autoresponders enabled="true"><autoresponder name="away" status="on"/></autoresponders>
    </preferences>
  </mailuser>
)";
        }
        file << "</mailusers></mailsystem></domain>\n";
    });
}

void writeListDump(const std::string& path, int members) {
    writeFile(path, [members](std::ostream& file) {
        file << "<domain name=\"domain.example\"><maillists><status><enabled/></status>\n"
                "<maillist name=\"news\"><owner>owner@domain.example</owner>\n";
        for (int number = 0; number < members; ++number) {
            file << "  <recipient>member" << number << "@other.example</recipient>\n";
        }
        file << "  <status><enabled/></status></maillist></maillists></domain>\n";
    });
}

void writeServerDump(const std::string& path, int templates) {
    writeFile(path, [templates](std::ostream& file) {
        const std::string items = appItems(templates / 4);
        file << "<server><account-templates>\n";
        for (int number = 0; number < templates; ++number) {
            file << accountTemplate(number);
        }
        file << "</account-templates>\n<application-vault><sapp-items-pool>\n"
             << items << "</sapp-items-pool></application-vault></server>\n"
             << "<client name=\"client\" deployer-action=\"update\"><sapp-pool>\n"
             << items << "</sapp-pool></client>\n";
    });
}

int domainsIn(std::size_t bytes) { return static_cast<int>(bytes / domain(100000).size()); }

}  // namespace bench
