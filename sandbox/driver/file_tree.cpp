#include "file_tree.h"

#include "sandbox.h"
#include "temp_dir.h"
#include "words.h"

#include <filesystem>
#include <map>
#include <stdexcept>

namespace {

namespace fs = std::filesystem;

struct File {
    std::string path;
    std::string mode;
    std::string content;
    bool isLink = false;
    bool isDirectory() const { return path.ends_with('/'); }
};

File fileOf(const std::string& line) {
    const auto words = sandbox::splitWords(line);
    if (words.empty()) throw std::runtime_error("a file without a name");
    File file{words[0].text, words[0].text.ends_with('/') ? "755" : "644", ""};
    std::size_t next = 1;
    if (next < words.size() && !words[next].quoted &&
        words[next].text.find_first_not_of("01234567") == std::string::npos) {
        file.mode = words[next++].text;
    }
    if (next < words.size() && !words[next].quoted && words[next].text == "->") {
        file.isLink = true;
        ++next;
    }
    if (next < words.size()) file.content = words[next++].text;
    if (next < words.size()) throw std::runtime_error("too many words: " + line);
    return file;
}

void make(const File& file, const TempDir& dir) {
    const fs::path path = dir.path(file.path);
    fs::create_directories(file.isDirectory() ? path : path.parent_path());
    if (file.isLink) {
        fs::create_symlink(file.content, path);
        return;
    }
    if (!file.isDirectory()) dir.write(file.path, file.content);
    fs::permissions(path, static_cast<fs::perms>(std::stoul(file.mode, nullptr, 8)));
}

}  // namespace

void makeArchive(const std::string& path, const std::string& files) {
    const TempDir dir;
    Lines command{"/bin/tar",
                  "--create",
                  "--auto-compress",
                  "--no-recursion",
                  "--owner=root:0",
                  "--group=root:0",
                  "--file=" + path,
                  "--directory=" + dir.path(""),
                  "--"};
    for (const std::string& line : linesOf(files)) {
        const File file = fileOf(line);
        make(file, dir);
        command.push_back(file.path);
    }
    fs::create_directories(fs::path(path).parent_path());
    const ProcessResult tar = Process(command, {"PATH=/usr/bin:/bin"}).wait();
    if (tar.exitStatus != 0) throw std::runtime_error("tar: " + tar.err);
}

std::string treeOf(Sandbox& box, const std::string& directory) {
    const std::string found =
        box.runCommand({"/usr/bin/find", directory, "-printf", R"(%P\0%u:%g\0%m\0%y\0%l\0)"}).out;
    std::map<std::string, std::string> lines;
    Lines fields;
    for (std::size_t at = 0; at < found.size(); at += fields.back().size() + 1) {
        fields.emplace_back(found.c_str() + at);
        if (fields.size() % 5 != 0) continue;
        const std::string* const field = &fields[fields.size() - 5];
        const std::string& type = field[3];
        const std::string inState = directory.substr(1) + "/" + field[0];
        const std::string path = (field[0].empty() ? "." : field[0]) + (type == "d" ? "/" : "");
        lines[path] =
            sandbox::quoteWord(path) + " " + field[1] +
            (type == "l"   ? " -> " + sandbox::quoteWord(field[4])
             : type == "d" ? " " + field[2]
             : type == "f" ? " " + field[2] + " " + sandbox::quoteWord(box.readFile(inState))
                           : " " + field[2] + " (" + type + ")");
    }
    std::string text;
    for (const auto& [path, line] : lines) text += line + "\n";
    return text;
}
