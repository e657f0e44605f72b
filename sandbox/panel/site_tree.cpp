#include "panel/site_tree.h"

#include <fcntl.h>
#include <idna.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <memory>
#include <span>
#include <stdexcept>
#include <string_view>

#include "files.h"
#include "panel/command.h"
#include "panel/system_users.h"
#include "paths.h"
#include "words.h"

namespace sandbox {

namespace {

// ---- what is made --------------------------------------------------------

constexpr char kRoot[] = "root";
constexpr char kServer[] = "qrdserv";
constexpr char kCustomers[] = "qrdcln";
constexpr char kUploads[] = "qrdftp";
constexpr char kMail[] = "popuser";
constexpr char kLists[] = "list";
constexpr char kSite[] = "";  // the account that it is made for

struct Directory {
    const char* path;
    std::string_view owner;
    const char* group;
    mode_t mode;
    bool hasStartPage = false;
};

// The web server reads what customers put there, they do not change what is the server's, and
// nobody sees what is another's.
constexpr Directory kVirtualHost[] = {
    {"", kRoot, kRoot, 0755},
    {"/httpdocs", kSite, kServer, 0750, true},
    {"/httpsdocs", kSite, kServer, 0750, true},
    {"/cgi-bin", kSite, kServer, 0750},
    {"/error_docs", kSite, kServer, 0755},
    {"/private", kSite, kRoot, 0750},
    {"/conf", kRoot, kServer, 0750},
    {"/statistics", kRoot, kRoot, 0755},
    {"/statistics/logs", kRoot, kServer, 0750},
    {"/statistics/webstat", kRoot, kRoot, 0755},
    {"/statistics/webstat-ssl", kRoot, kRoot, 0755},
    {"/statistics/ftpstat", kRoot, kRoot, 0755},
    {"/statistics/anon_ftpstat", kRoot, kRoot, 0755},
    {"/anon_ftp", kRoot, kRoot, 0755},
    {"/anon_ftp/pub", kSite, kCustomers, 0755},
    {"/anon_ftp/incoming", kSite, kUploads, 0770},
    {"/web_users", kRoot, kRoot, 0755},
    {"/subdomains", kRoot, kRoot, 0755},
};

constexpr Directory kSubdomain[] = {
    {"", kRoot, kRoot, 0755},
    {"/httpdocs", kSite, kServer, 0750, true},
    {"/httpsdocs", kSite, kServer, 0750, true},
    {"/cgi-bin", kSite, kServer, 0750},
    {"/conf", kRoot, kServer, 0750},
    {"/error_docs", kSite, kServer, 0755},
};

constexpr Directory kWebUser[] = {{"", kSite, kServer, 0750}};

constexpr Directory kDomainMail[] = {{"", kSite, kMail, 0755}};

constexpr Directory kMailName[] = {
    {"", kSite, kMail, 0700},
    {"/Maildir", kSite, kMail, 0700},
    {"/Maildir/cur", kSite, kMail, 0700},
    {"/Maildir/new", kSite, kMail, 0700},
    {"/Maildir/tmp", kSite, kMail, 0700},
};

constexpr Directory kListArchive[] = {{"", kSite, kLists, 0770}};

constexpr char kStartPage[] = "/index.html";
constexpr char kStartText[] = "This site is new.\n";

void setOwner(const std::string& path, uid_t user, gid_t group, mode_t mode) {
    if (chown(path.c_str(), user, group) != 0 || chmod(path.c_str(), mode) != 0) {
        failWithErrno("cannot hand over " + path);
    }
}

void makeStartPage(const std::string& path, uid_t user, gid_t group) {
    const Fd fd(open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644));
    if (!fd) {
        failWithErrno("cannot make " + path);
    }
    writeAll(fd.get(), kStartText);
    setOwner(path, user, group, 0644);
}

void makeTree(const std::string& base, std::span<const Directory> tree, const std::string& owner) {
    const auto site = systemUserId(owner);
    if (!site) {
        throw std::runtime_error("there is no account " + owner);
    }
    for (const Directory& one : tree) {
        const std::string path = base + one.path;
        const uid_t user = one.owner == kSite ? *site : 0;
        const gid_t group = systemGroupId(one.group);
        const bool isNew = mkdir(path.c_str(), one.mode) == 0;
        if (!isNew && errno != EEXIST) {
            failWithErrno("cannot make " + path);
        }
        setOwner(path, user, group, one.mode);
        if (one.hasStartPage && isNew) {
            makeStartPage(path + kStartPage, user, systemGroupId(kCustomers));
        }
    }
}

// ---- names ---------------------------------------------------------------

std::string asciiForm(const std::string& name) {
    char* converted = nullptr;
    const int outcome = idna_to_ascii_8z(name.c_str(), &converted, 0);
    const std::unique_ptr<char, decltype(&std::free)> owner(converted, &std::free);
    if (outcome != IDNA_SUCCESS) {
        throw Refusal("no name of a site: " + quoteWord(name));
    }
    std::string ascii = converted;
    std::transform(ascii.begin(), ascii.end(), ascii.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    return ascii;
}

const std::string& checkedComponent(const std::string& name) {
    if (name.empty() || name == "." || name == ".." || name.find('/') != std::string::npos) {
        throw Refusal("no name of a directory: " + quoteWord(name));
    }
    return name;
}

// What the panel's configuration says, with that behind it; empty where this is not below the
// product.
std::string belowConfigured(std::string_view key, const std::string& path) {
    const std::string text = readFile(kConfigurationFile).value_or("");
    for (const std::string_view line : splitText(text, '\n')) {
        const std::size_t end = line.find_first_of(" \t");
        if (end != std::string_view::npos && line.substr(0, end) == key) {
            const std::string directory(line.substr(line.find_first_not_of(" \t", end)));
            return directory.starts_with(std::string(kProductRoot) + "/") ? directory + path : "";
        }
    }
    return "";
}

std::string above(const std::string& path) { return path.substr(0, path.rfind('/')); }

}  // namespace

std::string virtualHostDirectory(const std::string& domain) {
    return belowConfigured("HTTPD_VHOSTS_D", "/" + checkedComponent(asciiForm(domain)));
}

std::string subdomainDirectory(const std::string& virtualHost, const std::string& subdomain) {
    return virtualHost + "/subdomains/" + checkedComponent(asciiForm(subdomain));
}

std::string webUserDirectory(const std::string& virtualHost, const std::string& login) {
    return virtualHost + "/web_users/" + checkedComponent(login);
}

std::string mailDirectory(const std::string& domain, const std::string& name) {
    return belowConfigured("ZELVO_MAILNAMES_D",
                           "/" + checkedComponent(domain) + "/" + checkedComponent(name));
}

std::string listArchive(const std::string& list) {
    return belowConfigured("MAILMAN_VAR_D",
                           "/archives/private/" + checkedComponent(list) + ".mbox");
}

void makeVirtualHost(const std::string& directory, const std::string& owner) {
    makeDirs(above(directory));
    makeTree(directory, kVirtualHost, owner);
}

void makeSubdomain(const std::string& directory, const std::string& owner) {
    makeTree(directory, kSubdomain, owner);
}

void makeWebUser(const std::string& directory, const std::string& owner) {
    makeTree(directory, kWebUser, owner);
}

void makeMailDirectory(const std::string& directory, const std::string& owner) {
    makeDirs(above(directory));
    makeTree(above(directory), kDomainMail, owner);
    makeTree(directory, kMailName, owner);
}

void makeListArchive(const std::string& directory, const std::string& owner) {
    makeDirs(above(directory));
    makeTree(directory, kListArchive, owner);
}

}  // namespace sandbox
