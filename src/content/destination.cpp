#include "content/destination.h"

#include <new>

#include "commons/files.h"
#include "commons/path_steps.h"
#include "content/content_errors.h"
#include "content/unsafe_name.h"
#include "lib/idn.h"

namespace zelvo {

namespace {

// The ASCII form of a name, as a part of a path. what: whose name it is.
std::string asciiComponent(const std::string& name, const std::string& what) {
    std::string ascii;
    try {
        ascii = idn::toAscii(name);
    } catch (const std::bad_alloc&) {
        throw EXC(IDNConversationError) % "Program failed due to exhausted memory";
    } catch (const std::exception& failure) {
        throw EXC(IDNConversationError) % failure.what();
    }
    return requireComponent(ascii, what);
}

}  // namespace

std::string aboveOffset(const std::string& destination, const std::string& offset) {
    if (!destination.ends_with(offset)) {
        return destination;
    }
    std::string above = destination.substr(0, destination.size() - offset.size());
    const bool isCutBetween = above.empty() || above.ends_with('/') || offset.starts_with('/');
    return isCutBetween ? above : destination;
}

std::string placeOfPart(const std::string& destination, const std::string& offset) {
    const bool isAbove = aboveOffset(destination, offset) == destination;
    return isAbove && !offset.empty() ? destination + "/" + offset : destination;
}

void requireUnpackedBelow(const std::string& directory, const std::string& destination,
                          const std::string& offset) {
    const std::string top = directory.ends_with('/') ? directory : directory + "/";
    if (!(aboveOffset(destination, offset) + "/").starts_with(top)) {
        throw EXC(UnsafeName) % offset % "a place in an archive" % ("it leads above " + directory);
    }
}

bool isSafeOffset(const std::string& offset) {
    const std::size_t start = offset.find_first_not_of(" \t\v\f\r");
    return (start == std::string::npos || offset[start] != '-') && !hasParentStep(offset) &&
           offset.find_first_of("\n\\") == std::string::npos;
}

std::string getVhostDir(const std::string& domain) {
    return files::getVhostsDir() + "/" + asciiComponent(domain, "a virtual host");
}

std::string getSubdomainDir(const std::string& vhostDir, const std::string& name) {
    return vhostDir + "/subdomains/" + asciiComponent(name, "a subdomain");
}

std::string getDomainMailDir(const std::string& domain) {
    return files::getMailDir() + "/" + domain;
}

std::string getMaildir(const std::string& domain, const std::string& mailName) {
    return getDomainMailDir(domain) + "/" + mailName + "/Maildir";
}

std::string getSpamDir(const std::string& domain, const std::string& mailName) {
    return getDomainMailDir(domain) + "/" + mailName + "/.spamassassin";
}

std::string getListArchivesDir() { return files::getMailmanVarDir() + "/archives/private/"; }

std::string getListMboxDir(const std::string& listName) {
    return getListArchivesDir() + listName + ".mbox";
}

}  // namespace zelvo
