// Version texts of the form "epoch:version-release", as package managers write them, and their
// order.
#pragma once

#include <cstddef>
#include <cstdio>
#include <iosfwd>
#include <string>
#include <vector>

namespace zelvo {

// A version, empty until a text is set. Its order is total: "less" passes on from one version to
// the next. Versions that are equal may be written differently, as "1.2" and "1..2" are.
class Version {
  public:
    virtual ~Version() = default;

    // These read a text and return 0, or -1 for a null or empty one, which leaves what was there.

    // An epoch, if a ":" stands in the text, and the version.
    int setVersionData(const char* text);
    // The release.
    int setReleaseData(const char* text);
    // Both, split at the last "-". A part that is empty counts as an empty text of its own, and a
    // text without "-" is the version alone: a release that was there stays.
    int setVersionReleaseData(const char* text);

    bool isEqual(const Version& other) const { return compareAll(other) == 0; }
    bool isLess(const Version& other) const { return compareAll(other) < 0; }
    bool isGreater(const Version& other) const { return compareAll(other) > 0; }

    // The item with this index, from 0: a run of digits or of other characters. Null for none; good
    // until the next text is set.
    const char* getVersionItem(std::size_t n) const;
    const char* getReleaseItem(std::size_t n) const;

    // Prints how the texts were read: "[2] : [1] "rc" [3]  [ --- ] [5] ".
    void displayVersion(FILE* file) const;
    // Prints the texts as they were given.
    friend std::ostream& operator<<(std::ostream& stream, const Version& version);

  protected:
    using Items = std::vector<std::string>;

    // All comparisons give less than 0, 0, or more than 0, as this version is before, equal to or
    // behind the other.
    virtual int compareEpochs(const Version& other) const;
    virtual int compareVersionItems(const Version& other) const;
    virtual int compareReleaseItems(const Version& other) const;
    // Splits the text into items; returns their number.
    virtual int parseVersionData(Items& items, const char* text) const;
    virtual int compareAll(const Version& other) const;
    // Compares two items. A number, which does not begin with "0", is behind any text, so that "09"
    // is before "1".
    virtual int compareItems(const char* a, const char* b) const;

  private:
    int compareLists(const Items& mine, const Items& others) const;

    bool hasEpoch_ = false;
    long epoch_ = 0;
    Items versionItems_;
    Items releaseItems_;
    std::string versionText_;
    std::string releaseText_;
};

}  // namespace zelvo
