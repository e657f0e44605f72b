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
    std::string owner = "root";
    std::string group = "root";
    bool isLink = false;
    bool isDirectory() const { return path.ends_with('/'); }
};

File fileOf(const std::string& line) {
    const auto words = sandbox::splitWords(line);
    if (words.empty()) throw std::runtime_error("a file without a name");
    File file{words[0].text, words[0].text.ends_with('/') ? "755" : "644", ""};
    std::size_t next = 1;
    const auto colon = next < words.size() ? words[next].text.find(':') : std::string::npos;
    if (colon != std::string::npos && !words[next].quoted) {
        file.owner = words[next].text.substr(0, colon);
        file.group = words[next++].text.substr(colon + 1);
    }
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

std::string idOf(const std::string& name) { return name == "root" ? ":0" : ":54321"; }

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
    const std::string plain = path + ".plain";
    const auto tar = [&plain](Lines options) {
        options.insert(options.begin(), {"/bin/tar", "--file=" + plain});
        const ProcessResult result = Process(options, {"PATH=/usr/bin:/bin"}).wait();
        if (result.exitStatus != 0) throw std::runtime_error("tar: " + result.err);
    };
    fs::create_directories(fs::path(path).parent_path());
    tar({"--create", "--files-from=/dev/null"});
    for (const std::string& line : linesOf(files)) {
        const File file = fileOf(line);
        make(file, dir);
        // The ids are for a system that does not know the names.
        tar({"--append", "--no-recursion", "--owner=" + file.owner + idOf(file.owner),
             "--group=" + file.group + idOf(file.group), "--directory=" + dir.path(""), "--",
             file.path});
    }
    if (path.ends_with("gz")) {
        const ProcessResult gzip = Process({"/bin/gzip", "--suffix=.gz", plain}, {}).wait();
        if (gzip.exitStatus != 0) throw std::runtime_error("gzip: " + gzip.err);
    }
    fs::rename(path.ends_with("gz") ? plain + ".gz" : plain, path);
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
        if (!box.hasFile(inState) && type == "f") {
            throw std::runtime_error(directory + " is in no view of the sandbox");
        }
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
