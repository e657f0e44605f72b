// What the command line of restorectl asks for.
#pragma once

#include <string>
#include <vector>

namespace zelvo {

// Where files are, and who may get at them.
struct Place {
    // As it was said, before its credentials are read: a URL or a path, which may be relative.
    std::string text;
    bool isSaid = false;
    std::string credentialsFile;

    // A URL of an FTP server, without login, or a local path; empty for the panel's own repository.
    std::string url;
    std::string login;
    std::string password;
};

// The settings of all commands; each reads its own.
struct Settings {
    Place repository;
    // The other side of a transfer: an archive, or for export a directory that ends in "/".
    Place other;
    // The FTP server opens data connections.
    bool isActive = false;
    bool asJson = false;
    bool isVerbose = false;
    // Tells what would be removed, and removes nothing.
    bool isDryRun = false;
    // Takes verdicts that are stored instead of checking anew.
    bool takesStored = false;
    // Checks what is listed.
    bool isChecked = false;
    // Archives are meant, and not structured backups.
    bool isPacked = false;
    // Of paths in the repository.
    std::vector<std::string> paths;
    // Of the object that is asked for; empty for every object.
    std::string listedType;
    // The highest that the object of an archive may have.
    std::string type = "server";
    // GUIDs; empty for any.
    std::string guid;
    std::string owner;
    // A regular expression (Perl's) on the names of archives; empty for any.
    std::string mask;
    int keep = 0;
};

}  // namespace zelvo
