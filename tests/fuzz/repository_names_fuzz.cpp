// Names, paths and URLs of a repository, whatever is in them. The first line of an input is the one
// in question, the second is what some questions take beside it. What is let through stays in its
// place, what is taken apart can be put together again, and what is no name raises what it is said
// to raise.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "exec/url_encoding.h"
#include "repository/creation_date.h"
#include "repository/ftp_connection.h"
#include "repository/ftp_url.h"
#include "repository/names.h"
#include "repository/path_guard.h"
#include "repository/repository_errors.h"
#include "repository/urls.h"

namespace zelvo {
namespace {

using std::string;

void require(bool holds) {
    if (!holds) abort();
}

// What a call returns, or none when it raises one of the failures.
template <class... Failures, class Call>
std::optional<string> unless(Call&& call) {
    try {
        return call();
    } catch (const ExTraceable& failure) {
        require((... || (dynamic_cast<const Failures*>(&failure) != nullptr)));
        return std::nullopt;
    }
}

std::vector<string> stepsOf(const string& path) {
    std::istringstream rest(path);
    std::vector<string> steps;
    for (string step; std::getline(rest, step, '/');) steps.push_back(step);
    return steps;
}

bool isStay(const string& step) { return step.empty() || step == "."; }

void guardPaths(const string& path) {
    const auto relative = unless<TransportException>([&] { return relativePath(path); });
    if (relative) {
        const std::vector<string> steps = stepsOf(*relative);
        require(std::count(steps.begin(), steps.end(), "..") == 0);
        require(!relative->starts_with('/') && !relative->starts_with('\\'));
        require(relative->find_first_of(string("\0\r\n", 3)) == string::npos);
        require(relativePath(*relative) == *relative && path.ends_with(*relative));
    }
    if (unless<TransportException>([&] { return requireInside(path); })) {
        const std::vector<string> steps = stepsOf(*relative);
        require(!std::all_of(steps.begin(), steps.end(), isStay));
    }
    if (unless<RepositoryException>([&] { return requireName(path, "it"); })) {
        require(isEntryName(path) && relativePath(path) == path);
    }
    if (isEntryName(path)) require(fileNameOf(joinPath("a/b", path)) == path);
    const string parent = parentOf(path);
    if (path.find('/') == string::npos || (!parent.empty() && !parent.ends_with('/'))) {
        require(joinPath(parent, fileNameOf(path)) == path);
    }
}

void readLabels(const string& path) {
    const string name = fileNameOf(path);
    const auto label = unless<RepositoryException>([&] { return GetDumpLabel(path); });
    if (label) {
        require(IsLabel(*label));
        require(name.find('.') == string::npos ? DirMatchToLabel(name, *label)
                                               : FileMatchToLabel(name, *label));
        const auto date = unless<Exc<&RepositoryError>>([&] {
            CreationDateMixin time;
            time.SetDateTimeStr(*label);
            return time.GetDateTimeStr();
        });
        require(!date || *date == *label || *label == ZERO_DATE);
    }
    require(label || !IsFtpDumpName(name));
    const auto ofInfo =
        unless<RepositoryException, Exc<&RepositoryError>>([&] { return GetInfoXmlsLabel(path); });
    if (ofInfo) {
        require(IsLabel(*ofInfo) && InfoXmlMatchToLabel(name, *ofInfo));
        string before;
        string behind;
        // No dump stands among the items of another one.
        require(IsAnyDiscoveredPath(path, before, behind) ||
                IsDiscoveredPath(GetDiscoveredDir(path), *ofInfo, before, behind));
    }
}

void findDiscovered(const string& path) {
    string before;
    string behind;
    if (!IsAnyDiscoveredPath(path, before, behind)) return;
    const string marked = DISCOVERED + ("/" + behind);
    const string whole = path + "/";
    require(whole.starts_with(before) && whole.find(marked) <= before.size() + 1);
}

void findPart(const string& base, const string& name) {
    unsigned number = 0;
    if (!IsSplittedPart(base, name, number)) return;
    const string digits = name.substr(base.size());
    require(name.starts_with(base) && std::all_of(digits.begin(), digits.end(), is_digit));
    require(digits.empty() ? number == 0 : std::stoul(digits) == number);
}

void sortWords(const string& text) {
    std::istringstream words(text);
    std::vector<string> all;
    for (string word; words >> word;) all.push_back(word);
    const std::vector<string> sorted = SortPaths(all);
    require(std::is_sorted(sorted.begin(), sorted.end()));
    for (const string& path : all) {
        // Itself, or the one above it.
        require(std::count_if(sorted.begin(), sorted.end(),
                              [&](const string& top) { return PathBeginsWith(top, path); }) == 1);
    }
}

void takeApart(const string& url) {
    string base;
    string name;
    DecomposeUrl(url, base, name);
    require(base + name == url && name.find('/') == string::npos);
    const string place = GetUrlPlace(url);
    require(place.empty() || place == url ||
            place.size() + GetUrlLogin(url).size() + 1 == url.size());
    const string whole = url.starts_with("ftp://") ? url : "ftp://" + url;
    const string login = loginOfUrl(whole);
    const string shown = urlWithoutLogin(whole);
    // One without a host is refused before it is shown or gone to.
    require(login.empty() || !hasHost(whole) || GetUrlWithAuth(shown, login) == whole);
    require(loginOfUrl(shown).empty());
}

void encodePath(const string& text) {
    const string host = "ftp://h";
    const auto url =
        unless<Exc<&tFtpConnection::InvalidPath>>([&] { return encodeFtpUrl(host + "/" + text); });
    require(url.has_value() != hasControlCharacter(text));
    if (!url) return;
    const string path = url->substr(host.size());
    require(path.find_first_of("#?;@ ") == string::npos && !hasControlCharacter(path));
    require(urldecode(path) == "/" + text);
    require(parentUrl(*url).starts_with(rootUrl(*url)) && rootUrl(*url) == host + "/");
}

// A login that stands in the URL ends where it ended and comes back whole.
void encodeLogin(const string& login, const string& password) {
    string auth;
    bool isInUrl = false;
    GetAuthStr(login, password, auth, isInUrl);
    if (!isInUrl) return;
    require(loginOfUrl(GetUrlWithAuth("ftp://h/d", auth)) == auth);
    const auto colon = auth.find(':');
    require(urldecode(auth.substr(0, colon)) == login);
    require(urldecode(auth.substr(colon + 1)) == password);
}

void askAll(const string& all) {
    const auto end = std::min(all.find('\n'), all.size());
    const string first = all.substr(0, end);
    const string second = all.substr(std::min(end + 1, all.size()));
    guardPaths(first);
    guardPaths(all);
    readLabels(first);
    findDiscovered(first);
    findPart(second, first);
    sortWords(all);
    takeApart(first);
    encodePath(first);
    // No login holds a zero byte: it comes from a URL or from the command line.
    if (all.find('\0') == string::npos) encodeLogin(first, second);
}

}  // namespace
}  // namespace zelvo

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    zelvo::askAll(std::string(reinterpret_cast<const char*>(data), size));
    return 0;
}
