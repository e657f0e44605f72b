#include "gate_request.h"

#include <spawn.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <stdexcept>

#include "files.h"
#include "paths.h"

namespace sandbox {

namespace {

int hexDigit(char c) {
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    if (c >= 'a' && c <= 'f') {
        return c - 'a' + 10;
    }
    if (c >= 'A' && c <= 'F') {
        return c - 'A' + 10;
    }
    return -1;
}

std::string urlDecode(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool escape = text[i] == '%' && i + 2 < text.size() && hexDigit(text[i + 1]) >= 0 &&
                            hexDigit(text[i + 2]) >= 0;
        if (escape) {
            out += static_cast<char>(hexDigit(text[i + 1]) * 16 + hexDigit(text[i + 2]));
            i += 2;
        } else {
            out += text[i] == '+' ? ' ' : text[i];
        }
    }
    return out;
}

// The text between the brackets of "ARG[...]" or "ENV[...]".
bool readIndexed(std::string_view key, std::string_view name, std::string& index) {
    if (!key.starts_with(name) || !key.substr(name.size()).starts_with('[') ||
        !key.ends_with(']')) {
        return false;
    }
    key.remove_prefix(name.size() + 1);
    key.remove_suffix(1);
    index = key;
    return true;
}

std::size_t toIndex(const std::string& text) {
    std::size_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size()) {
        throw std::runtime_error("ARG[" + text + "] is no numbered argument");
    }
    return value;
}

std::vector<std::string> inOrder(std::map<std::size_t, std::string> numbered) {
    std::vector<std::string> arguments;
    for (auto& [index, value] : numbered) {
        if (index != arguments.size()) {
            throw std::runtime_error("ARG[" + std::to_string(arguments.size()) + "] is missing");
        }
        arguments.push_back(std::move(value));
    }
    return arguments;
}

// A file in memory for one stream of the utility: a pipe would have to be served while the utility
// runs.
Fd memoryFile(const char* name) {
    Fd fd(memfd_create(name, MFD_CLOEXEC));
    if (!fd) {
        failWithErrno("cannot make a file in memory");
    }
    return fd;
}

std::string contentOf(const Fd& fd) {
    if (lseek(fd.get(), 0, SEEK_SET) != 0) {
        failWithErrno("cannot rewind");
    }
    return readAll(fd.get());
}

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (std::string& text : texts) {
        pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

class FileActions {
  public:
    FileActions() { posix_spawn_file_actions_init(&actions_); }
    ~FileActions() { posix_spawn_file_actions_destroy(&actions_); }
    FileActions(const FileActions&) = delete;
    FileActions& operator=(const FileActions&) = delete;

    void put(const Fd& fd, int place) {
        posix_spawn_file_actions_adddup2(&actions_, fd.get(), place);
    }
    const posix_spawn_file_actions_t* get() const { return &actions_; }

  private:
    posix_spawn_file_actions_t actions_{};
};

int waitFor(pid_t pid) {
    int status = 0;
    while (waitpid(pid, &status, 0) < 0) {
        if (errno != EINTR) {
            failWithErrno("cannot wait for the utility");
        }
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace

GateRequest parseGateRequest(std::string_view form) {
    GateRequest request;
    std::map<std::size_t, std::string> arguments;
    while (!form.empty()) {
        const std::string_view field = form.substr(0, form.find('&'));
        form.remove_prefix(std::min(field.size() + 1, form.size()));
        const auto equals = field.find('=');
        if (equals == std::string_view::npos) {
            continue;
        }
        const std::string_view key = field.substr(0, equals);
        std::string value = urlDecode(field.substr(equals + 1));
        std::string index;
        if (key == "STDIN") {
            request.input = std::move(value);
        } else if (readIndexed(key, "ARG", index)) {
            if (!arguments.emplace(toIndex(index), std::move(value)).second) {
                throw std::runtime_error("ARG[" + index + "] is given twice");
            }
        } else if (readIndexed(key, "ENV", index)) {
            request.environment[urlDecode(index)] = std::move(value);
        }
    }
    request.arguments = inOrder(std::move(arguments));
    return request;
}

GateResult runGateRequest(const GateRequest& request) {
    const std::string& name = request.arguments.at(0);
    const std::string path = std::string(kUtilityDir) + "/" + name + ".php";
    if (name.empty() || name.find('/') != std::string::npos || !fileExists(path)) {
        throw std::runtime_error("There is no utility '" + name + "'");
    }
    std::vector<std::string> arguments = request.arguments;
    arguments[0] = path;
    std::vector<std::string> environment{"PATH=/usr/sbin:/usr/bin:/sbin:/bin"};
    for (const auto& [key, value] : request.environment) {
        environment.push_back(key + "=" + value);
    }

    const Fd in = memoryFile("stdin");
    const Fd out = memoryFile("stdout");
    const Fd err = memoryFile("stderr");
    writeAll(in.get(), request.input);
    lseek(in.get(), 0, SEEK_SET);
    FileActions actions;
    actions.put(in, 0);
    actions.put(out, 1);
    actions.put(err, 2);

    pid_t pid = 0;
    errno = posix_spawn(&pid, path.c_str(), actions.get(), nullptr, pointersTo(arguments).data(),
                        pointersTo(environment).data());
    if (errno != 0) {
        failWithErrno("cannot start " + path);
    }
    const int status = waitFor(pid);
    return {status, contentOf(out), contentOf(err)};
}

}  // namespace sandbox
