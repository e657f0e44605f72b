#include "ftp_server.h"

#include "free_port.h"
#include "process.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <pwd.h>
#include <sys/socket.h>
#include <unistd.h>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <thread>

namespace {

namespace fs = std::filesystem;

constexpr std::chrono::seconds kPatience(30);

const std::vector<std::string> kEnvironment = {"PATH=/usr/sbin:/usr/bin:/sbin:/bin", "LC_ALL=C"};

// Everybody may come in; the sandbox of the server itself asks for what containers do not give.
constexpr char kVsftpdSettings[] = R"(
listen=YES
listen_address=127.0.0.1
background=NO
anonymous_enable=YES
write_enable=YES
anon_upload_enable=YES
anon_mkdir_write_enable=YES
anon_other_write_enable=YES
anon_world_readable_only=NO
anon_umask=022
seccomp_sandbox=NO
isolate_network=NO
connect_from_port_20=NO
)";

constexpr char kPyftpdlibScript[] = R"(
import logging, sys
logging.basicConfig(level=logging.ERROR)  # nobody reads what it tells
from pyftpdlib.authorizers import DummyAuthorizer
from pyftpdlib.handlers import FTPHandler
from pyftpdlib.servers import FTPServer
port, root, login, password = sys.argv[1:]
FTPHandler.authorizer = DummyAuthorizer()
FTPHandler.authorizer.add_user(login, password, root, perm="elradfmwMT")
FTPServer(("127.0.0.1", int(port)), FTPHandler).serve_forever()
)";

bool somebodyListens(int port) {
    const int client = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<uint16_t>(port));
    const bool isThere =
        connect(client, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    close(client);
    return isThere;
}

// A test that crashes takes its server along.
std::unique_ptr<Process> startServer(std::vector<std::string> command) {
    command.insert(command.begin(), {"setpriv", "--pdeathsig", "KILL"});
    return std::make_unique<Process>(command, kEnvironment);
}

}  // namespace

FtpServer::FtpServer(Kind kind, const std::string& directory)
    : directory_(directory), port_(freePort()) {
    fs::create_directories(root() + "/repo");
    kind == Kind::kPyftpdlib ? startPyftpdlib() : startVsftpd(kind == Kind::kHidingVsftpd);
    awaitAnswer();
}

FtpServer::~FtpServer() = default;

void FtpServer::startVsftpd(bool isHiding) {
    login_ = "anonymous";
    password_ = "guest@example.com";
    const passwd* const owner = getpwnam("ftp");
    if (owner == nullptr || chown((root() + "/repo").c_str(), owner->pw_uid, owner->pw_gid) != 0) {
        throw std::runtime_error("no user for the FTP server");
    }
    // The server goes there as that user.
    for (fs::path path = root(); path != path.root_path(); path = path.parent_path()) {
        fs::permissions(path, fs::perms::others_exec, fs::perm_options::add);
    }
    fs::create_directory(directory_ + "/empty");
    std::ofstream(directory_ + "/vsftpd.conf")
        << kVsftpdSettings + 1 << "listen_port=" << port_ << "\nanon_root=" << root()
        << "\nsecure_chroot_dir=" << directory_
        << "/empty\nforce_dot_files=" << (isHiding ? "NO" : "YES") << "\n";
    server_ = startServer({"vsftpd", directory_ + "/vsftpd.conf"});
}

void FtpServer::startPyftpdlib() {
    login_ = "back:up@host/1#?";
    password_ = "p:#?% w";
    server_ = startServer({"/usr/bin/python3", "-c", kPyftpdlibScript, std::to_string(port_),
                           root(), login_, password_});
}

void FtpServer::awaitAnswer() const {
    const auto end = std::chrono::steady_clock::now() + kPatience;
    while (!somebodyListens(port_)) {
        if (std::chrono::steady_clock::now() > end) {
            throw std::runtime_error("the FTP server does not start:\n" +
                                     server_->wait(std::chrono::milliseconds(1)).err);
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
}
