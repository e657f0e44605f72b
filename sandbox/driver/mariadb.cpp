#include "mariadb.h"

#include "free_port.h"
#include "process.h"

#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>
#include <algorithm>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <thread>

namespace {

namespace fs = std::filesystem;

constexpr char kSocket[] = "/run/mysqld/mysqld.sock";
constexpr char kScripts[] = "/usr/share/mysql/";
constexpr std::chrono::seconds kPatience(30);

const std::vector<std::string> kEnvironment = {"PATH=/usr/sbin:/usr/bin:/sbin:/bin", "LC_ALL=C"};

// Small files and no care for a power cut: the data lives as long as a test.
std::vector<std::string> serverCommand(const std::string& directory) {
    return {"mariadbd", "--no-defaults", "--user=root", "--datadir=" + directory + "/data",
            // A starting server deletes the temporary tables of all others there.
            "--tmpdir=" + directory + "/tmp", "--log-error=" + directory + "/server.err",
            "--innodb-buffer-pool-size=8M", "--innodb-log-file-size=4M",
            "--innodb-data-file-path=ibdata1:5M:autoextend",
            "--innodb-temp-data-file-path=ibtmp1:5M:autoextend",
            "--innodb-flush-log-at-trx-commit=0"};
}

void hideSystemSockets() {
    if (unshare(CLONE_NEWNS) != 0 ||
        mount("none", "/", "none", MS_REC | MS_PRIVATE, nullptr) != 0 ||
        mount("none", "/run", "tmpfs", 0, nullptr) != 0) {
        throw std::runtime_error("no mount namespace for the database server: it needs root");
    }
    fs::create_directory(fs::path(kSocket).parent_path());
}

class Socket {
  public:
    explicit Socket(int family) : fd_(socket(family, SOCK_STREAM | SOCK_CLOEXEC, 0)) {}
    ~Socket() { close(fd_); }
    Socket(const Socket&) = delete;
    Socket& operator=(const Socket&) = delete;
    int fd() const { return fd_; }

  private:
    int fd_;
};

bool somebodyListens() {
    const Socket client(AF_UNIX);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::copy(std::begin(kSocket), std::end(kSocket), address.sun_path);
    return connect(client.fd(), reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
}

}  // namespace

MariaDbServer::MariaDbServer(const std::string& directory, const std::vector<std::string>& options)
    : directory_(directory), port_(freePort()) {
    hideSystemSockets();
    fs::create_directories(directory_ + "/tmp");
    if (fs::create_directories(directory_ + "/data")) initialise();
    start(options);
    awaitAnswer();
}

MariaDbServer::~MariaDbServer() {
    if (::testing::Test::HasFailure()) GTEST_LOG_(INFO) << log();
    if (server_) {
        server_->signal(SIGTERM);
        if (server_->wait(kPatience).timedOut) ADD_FAILURE() << "the database server does not stop";
        server_.reset();
    }
    umount2("/run", MNT_DETACH);
}

std::string MariaDbServer::socket() const { return kSocket; }

std::string MariaDbServer::log() const {
    std::ifstream file(directory_ + "/server.err");
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// The system tables as the server's own set-up makes them, without its help texts and its views.
void MariaDbServer::initialise() {
    std::ofstream(directory_ + "/first.sql") << "create database mysql;\nuse mysql;\n"
                                                "set @skip_auth_anonymous=1;\n";
    const std::string scripts = std::string(kScripts) + "mysql_system_tables";
    std::vector<std::string> command = {"sh", "-c",
                                        "cat '" + directory_ + "/first.sql' " + scripts + ".sql " +
                                            scripts + "_data.sql | \"$@\" --bootstrap",
                                        "sh"};
    const std::vector<std::string> server = serverCommand(directory_);
    command.insert(command.end(), server.begin(), server.end());
    if (Process(command, kEnvironment).wait(kPatience).exitStatus != 0) {
        throw std::runtime_error("the database server makes no tables:\n" + log());
    }
}

void MariaDbServer::start(const std::vector<std::string>& options) {
    // A test that crashes takes its server along.
    std::vector<std::string> command = {"setpriv", "--pdeathsig", "KILL"};
    const std::vector<std::string> server = serverCommand(directory_);
    command.insert(command.end(), server.begin(), server.end());
    command.insert(command.end(), {"--socket=" + socket(), "--bind-address=127.0.0.1",
                                   "--port=" + std::to_string(port_), "--skip-name-resolve",
                                   "--pid-file=" + directory_ + "/pid"});
    command.insert(command.end(), options.begin(), options.end());
    server_ = std::make_unique<Process>(command, kEnvironment);
}

void MariaDbServer::awaitAnswer() const {
    const auto end = std::chrono::steady_clock::now() + kPatience;
    while (!somebodyListens()) {
        if (hasEnded() || std::chrono::steady_clock::now() > end) {
            throw std::runtime_error("the database server does not start:\n" + log());
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
}

// Leaves the ended child to be waited for.
bool MariaDbServer::hasEnded() const {
    siginfo_t state{};
    waitid(P_PID, static_cast<id_t>(server_->pid()), &state, WEXITED | WNOHANG | WNOWAIT);
    return state.si_pid != 0;
}

std::string MariaDbServer::query(const std::string& sql) {
    const ProcessResult result =
        Process({"mariadb", "--no-defaults", "--batch", "--skip-column-names", "--user=root",
                 "--default-character-set=binary", "--socket=" + socket(), "--execute=" + sql},
                kEnvironment)
            .wait(kPatience);
    if (result.exitStatus != 0) throw std::runtime_error(result.err);
    return result.out;
}
