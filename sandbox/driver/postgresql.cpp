#include "postgresql.h"

#include "free_port.h"
#include "process.h"

#include <gtest/gtest.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>
#include <algorithm>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <thread>
#include <vector>

namespace {

namespace fs = std::filesystem;
using Words = std::vector<std::string>;

constexpr char kUser[] = "postgres";
constexpr char kInstallations[] = "/usr/lib/postgresql";
constexpr std::chrono::seconds kPatience(30);

const Words kEnvironment = {"PATH=/usr/bin:/bin", "LC_ALL=C"};

// A program of the newest server that is installed.
std::string program(const std::string& name) {
    fs::path newest;
    for (const auto& entry : fs::directory_iterator(kInstallations)) {
        newest = std::max(newest, entry.path());
    }
    return newest / "bin" / name;
}

// As the server's user.
Words asServer(const Words& command) {
    Words words = {"setpriv", std::string("--reuid=") + kUser, std::string("--regid=") + kUser,
                   "--clear-groups"};
    words.insert(words.end(), command.begin(), command.end());
    return words;
}

std::string outputOf(const Words& command) {
    const ProcessResult result = Process(command, kEnvironment).wait(kPatience);
    if (result.exitStatus != 0) throw std::runtime_error(command[0] + ": " + result.err);
    return result.out;
}

}  // namespace

PostgreSqlServer::PostgreSqlServer(const std::string& directory)
    : directory_(directory), port_(freePort()) {
    initialise();
    // Small, and no care for a power cut: the data lives as long as a test.
    server_ = std::make_unique<Process>(
        asServer({"sh", "-c", "exec \"$@\" 2> \"$0\"", directory_ + "/log", program("postgres"),
                  "-D", directory_ + "/data", "-c", "listen_addresses=127.0.0.1", "-c",
                  "port=" + std::to_string(port_), "-c", "unix_socket_directories=" + directory_,
                  "-c", "fsync=off", "-c", "shared_buffers=8MB", "-c", "max_connections=10"}),
        kEnvironment);
    awaitAnswer();
}

PostgreSqlServer::~PostgreSqlServer() {
    if (::testing::Test::HasFailure()) GTEST_LOG_(INFO) << log();
    // The quick way down, with clients sent away.
    server_->signal(SIGINT);
    server_->wait(kPatience);
}

std::string PostgreSqlServer::log() const {
    std::ifstream file(directory_ + "/log");
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void PostgreSqlServer::initialise() const {
    fs::create_directories(directory_);
    const passwd* const user = getpwnam(kUser);
    if (user == nullptr || chown(directory_.c_str(), user->pw_uid, user->pw_gid) != 0) {
        throw std::runtime_error("no user for the database server");
    }
    const std::string password = directory_ + "/password";
    std::ofstream(password) << "of the superuser, whom no test lets in by it\n";
    outputOf(asServer({program("initdb"), "-D", directory_ + "/data", "-U", kUser, "--no-sync",
                       "--locale=C", "--encoding=UTF8", "--auth-local=trust",
                       "--auth-host=scram-sha-256", "--pwfile=" + password}));
}

void PostgreSqlServer::awaitAnswer() const {
    const auto end = std::chrono::steady_clock::now() + kPatience;
    const Words question = {"pg_isready", "-q", "-h", directory_, "-p", std::to_string(port_)};
    while (Process(question, kEnvironment).wait(kPatience).exitStatus != 0) {
        if (std::chrono::steady_clock::now() > end) {
            throw std::runtime_error("the database server does not start:\n" + log());
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
}

std::string PostgreSqlServer::query(const std::string& sql, const std::string& database) {
    return outputOf({"psql", "-X", "-q", "-A", "-t", "-F", "\t", "-v", "ON_ERROR_STOP=1", "-U",
                     kUser, "-h", directory_, "-p", std::to_string(port_), "-d", database, "-c",
                     sql});
}

std::string PostgreSqlServer::dump(const std::string& database) {
    return outputOf(
        {"pg_dump", "-Fc", "-U", kUser, "-h", directory_, "-p", std::to_string(port_), database});
}
