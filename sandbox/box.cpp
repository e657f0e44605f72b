#include "box.h"

#include <fcntl.h>
#include <net/if.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/mount.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <set>
#include <stdexcept>
#include <string_view>
#include <vector>

#include "files.h"
#include "paths.h"
#include "utilities.h"

namespace sandbox {

namespace {

namespace fs = std::filesystem;

constexpr char kConfiguration[] =
    "# The panel in a box.\n"
    "PRODUCT_ROOT_D /opt/qrd\n"
    "HTTPD_VHOSTS_D /opt/qrd/var/vhosts\n"
    "ZELVO_MAILNAMES_D /opt/qrd/var/mailnames\n"
    "DUMP_D /opt/qrd/var/dumps\n"
    "MAILMAN_ROOT_D /opt/qrd/mailman\n"
    "MAILMAN_VAR_D /opt/qrd/var/mailman\n";
constexpr char kClients[] = "MYSQL_BIN_D /opt/qrd/RMK\nPGSQL_BIN_D /opt/qrd/RMK\n";
constexpr char kPassword[] = "panel-in-a-box\n";

// Ids that differ between user and group show where one is taken for the other.
constexpr const char* kUsers[] = {"qrdadm:x:2110:2120:panel:/opt/qrd/admin:/bin/false",
                                  "popuser:x:2111:2121:mail:/opt/qrd/var/mailnames:/bin/false",
                                  "mailman:x:2112:2122:mail lists:/opt/qrd/mailman:/bin/false",
                                  "list:x:2116:2126:list archives:/opt/qrd/mailman:/bin/false"};
constexpr const char* kGroups[] = {
    "qrdadm:x:2120:",  "popuser:x:2121:", "mailman:x:2122:", "qrdcln:x:2123:",
    "qrdserv:x:2124:", "qrdftp:x:2125:",  "list:x:2126:"};

void mountOrFail(const std::string& source, const std::string& target, unsigned long flags) {
    if (mount(source.c_str(), target.c_str(), nullptr, flags, nullptr) != 0) {
        failWithErrno("cannot mount " + source + " on " + target);
    }
}

void bindTree(const std::string& source, const std::string& target) {
    mountOrFail(source, target, MS_BIND | MS_REC);
}

// What stands there already stays, a file that a person put there included.
void makeLink(const std::string& target, const std::string& path) {
    if (symlink(target.c_str(), path.c_str()) != 0 && errno != EEXIST) {
        failWithErrno("cannot link " + path);
    }
}

void makeFile(const std::string& path, std::string_view text, mode_t mode) {
    const Fd fd(open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
    if (!fd && errno == EEXIST) {
        return;
    }
    if (!fd) {
        failWithErrno("cannot make " + path);
    }
    writeAll(fd.get(), text);
}

// ---- views ---------------------------------------------------------------

// A directory of the machine as the box sees it: everything leads to the machine's own through
// links, except for what stands in the view already.
class View {
  public:
    View(const BoxOptions& options, std::string path, const std::string& name)
        : path_(std::move(path)),
          view_(options.state + "/" + name),
          machine_(options.state + "/" + name + ".host"),
          machineInside_(std::string(kStateDir) + "/" + name + ".host") {
        makeDir(view_);
        makeDir(machine_);
        bindTree(path_, machine_);
    }

    const std::string& directory() const { return view_; }

    void fill() const {
        for (const auto& entry : fs::directory_iterator(machine_)) {
            const std::string name = entry.path().filename();
            // A relative link means the same in the view as where it comes from.
            makeLink(entry.is_symlink() ? fs::read_symlink(entry.path()).string()
                                        : machineInside_ + "/" + name,
                     view_ + "/" + name);
        }
    }

    void show() const { bindTree(view_, path_); }

  private:
    std::string path_;
    std::string view_;
    std::string machine_;
    std::string machineInside_;
};

// ---- /etc ----------------------------------------------------------------

std::string_view nameOf(std::string_view line) { return line.substr(0, line.find(':')); }

// The machine's accounts with those of the panel in place of any namesakes.
template <std::size_t N>
std::string withAccounts(const std::string& path, const char* const (&accounts)[N]) {
    std::set<std::string_view> own;
    for (const char* account : accounts) {
        own.insert(nameOf(account));
    }
    const std::string text = readFile(path).value_or("");
    std::string out;
    for (std::string_view rest = text; !rest.empty();) {
        const std::string_view line = rest.substr(0, rest.find('\n'));
        rest.remove_prefix(std::min(line.size() + 1, rest.size()));
        if (!own.contains(nameOf(line))) {
            out.append(line) += '\n';
        }
    }
    for (const char* account : accounts) {
        out.append(account) += '\n';
    }
    return out;
}

void fillEtc(const std::string& etc, const BoxOptions& options) {
    makeFile(etc + "/passwd", withAccounts("/etc/passwd", kUsers), 0644);
    makeFile(etc + "/group", withAccounts("/etc/group", kGroups), 0644);
    makeDir(etc + "/qrd");
    makeFile(etc + "/qrd/.qrd.shadow", kPassword, 0600);
    if (options.configuration) {
        makeFile(etc + "/qrd/qrd.conf",
                 std::string(kConfiguration) + (options.clients ? kClients : ""), 0644);
    }
}

// ---- the product ---------------------------------------------------------

// Links to all that the directory holds; what is there already stays.
void linkEntries(const fs::path& directory, const std::string& target) {
    if (!fs::is_directory(directory)) {
        return;
    }
    for (const auto& entry : fs::directory_iterator(directory)) {
        makeLink(fs::canonical(entry.path()), target + "/" + entry.path().filename().string());
    }
}

// The agents are linked one by one, so that a state can have more of them.
void fillRmk(const std::string& rmk) {
    makeDirs(rmk);
    makeDir(rmk + "/tmp", 0711);
    makeDir(rmk + "/agents");
    linkEntries(SANDBOX_SHARE_DIR, rmk);
    linkEntries(std::string(SANDBOX_SHARE_DIR) + "/agents", rmk + "/agents");
}

// The converters run as the mail user, who reaches neither the state nor where these were built:
// each is a program of its own and a copy.
void copyTools(const std::string& rmk) {
    for (const auto& entry : fs::directory_iterator(SANDBOX_TOOLS_DIR)) {
        makeFile(rmk + "/" + entry.path().filename().string(), readFile(entry.path()).value_or(""),
                 0755);
    }
}

void fillProduct(const std::string& root, const BoxOptions& options) {
    for (const char* name : {"/admin/vlib/api-cli", "/admin/vlib/backup/suspend_handler",
                             "/admin/sbin", "/bin", "/mailman/bin", "/var/sandbox", "/var/vhosts",
                             "/var/mailnames", "/var/mailman/archives/private", "/var/dumps"}) {
        makeDirs(root + name);
    }
    fillRmk(root + "/RMK");
    copyTools(root + "/RMK");
    const std::string utility = options.utilities + "/panel-utility";
    for (const char* name : kUtilities) {
        makeLink(utility, root + "/admin/vlib/api-cli/" + name + ".php");
    }
    for (const char* name : kTools) {
        makeLink(utility, root + "/" + name);
    }
    makeLink(options.utilities + "/panel-show", root + "/bin/panel-show");
    makeLink(root + "/RMK/backup_sign", root + "/admin/sbin/backup_sign");
}

// ---- the namespace -------------------------------------------------------

void leaveMachine() {
    if (unshare(CLONE_NEWNS | CLONE_NEWNET) != 0) {
        failWithErrno("cannot make a namespace");
    }
    // Before anything is mounted: no mount of the box may reach the machine.
    mountOrFail("none", "/", MS_REC | MS_PRIVATE);
}

void bringLoopbackUp() {
    const Fd fd(socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0));
    ifreq request{};
    std::strcpy(request.ifr_name, "lo");
    request.ifr_flags = IFF_UP | IFF_RUNNING;
    if (!fd || ioctl(fd.get(), SIOCSIFFLAGS, &request) != 0) {
        failWithErrno("cannot bring lo up");
    }
}

void enterDirectoryAgain(const fs::path& directory) {
    // The old directory is still that of the machine where a view hides it.
    std::error_code ignored;
    fs::current_path(directory, ignored);
}

}  // namespace

void enterBox(const BoxOptions& options) {
    const fs::path directory = fs::current_path();
    leaveMachine();
    bringLoopbackUp();

    const View etc(options, "/etc", "etc");
    fillEtc(etc.directory(), options);
    etc.fill();
    const View opt(options, "/opt", "opt");
    fillProduct(opt.directory() + "/qrd", options);
    opt.fill();
    std::vector<View> views;
    if (!options.configuration) {
        // The product's place when no configuration names another.
        const View local(options, "/usr/local", "local");
        makeLink(kProductRoot, local.directory() + "/qrd");
        local.fill();
        views.push_back(local);
    }
    // With all that is mounted in it so far, since the views lead through here.
    bindTree(options.state, opt.directory() + "/qrd/var/sandbox");
    views.push_back(opt);
    views.push_back(etc);
    for (const View& view : views) {
        view.show();
    }
    enterDirectoryAgain(directory);
}

void removeState(const std::string& state) {
    for (const char* name : {"/etc.host", "/opt.host", "/local.host"}) {
        const std::string path = state + name;
        // A mount point cannot be removed, and neither can what it would show.
        if (rmdir(path.c_str()) != 0 && errno != ENOENT) {
            failWithErrno("cannot remove " + path);
        }
    }
    fs::remove_all(state);
}

}  // namespace sandbox
