// Content identifiers: what a dump says of an archive that belongs to an object.
#pragma once

#include <string>
#include <unordered_set>
#include <vector>

#include "xml/xml_node.h"

namespace zelvo {

// The record of one content/cid element. An empty one means that the object has no such content.
class Cid {
  public:
    Cid() = default;
    // node: the cid element. See load. Here as in every constructor the class reads by its own
    // doLoad, not by that of a class derived from it.
    explicit Cid(const XmlNode& node);
    // parent: the object's element. See loadCidType.
    Cid(const XmlNode& parent, const std::string& cidType);
    virtual ~Cid() = default;
    Cid(const Cid&) = default;
    Cid& operator=(const Cid&) = default;

    // Reads a cid element anew. Raises NotSupportedOperation for one whose content lies inside
    // another archive, and what doLoad raises.
    void load(const XmlNode& node);

    // Reads anew the first cid element of a type below an object's element; stays empty when there
    // is none. cidType: a type word, compared in full. Raises what doLoad raises.
    void loadCidType(const XmlNode& parent, const std::string& cidType);

    void clear();

    // "PATH[TYPE]: " and each file followed by ",".
    std::string str() const;

    // True for the same files, in the same order, at the same path; the type takes no part.
    bool operator==(const Cid& other) const;

    // Directory of the content files, relative to the dump's root.
    std::string path;
    // The type word.
    std::string type;
    // The volumes of the archive, in document order.
    std::vector<std::string> files;

  protected:
    // Reads the attributes and the files of a cid element. Raises NotSupportedOperation for a type
    // that is not supported.
    virtual void doLoad(const XmlNode& node);
    virtual bool isTypeSupported(const std::string& cidType) const;
};

// A cid that may be a part of a larger archive. Needs theDebugLog.
class RefferredCid : public Cid {
  public:
    RefferredCid() = default;
    RefferredCid(const XmlNode& parent, const std::string& cidType);

    // Sub-path inside the archive; may be empty.
    std::string offset;
    // The content lies inside a whole-content archive.
    bool referred = false;

  protected:
    void doLoad(const XmlNode& node) override;
};

// A cid of a whole archive and those that were found to lie inside it. Needs theDebugLog.
class WholeContentCid : public Cid {
  public:
    using Cid::Cid;

    // Notes a cid that names exactly this archive; passes over any other in silence. cid: may be
    // null; not owned, has to live as long as this object.
    void addReferredCid(RefferredCid* cid);

    // The offsets of the noted cids that have one, in the order of adding.
    std::vector<std::string> getIncludes() const;

    bool hasReferredCids() const { return !referredCids_.empty(); }
    // Whether this very cid was noted.
    bool holds(const RefferredCid& cid) const { return held_.contains(&cid); }

  private:
    std::vector<RefferredCid*> referredCids_;
    // The same once more: a domain has tens of thousands of parts, each of which is asked for.
    std::unordered_set<const RefferredCid*> held_;
};

}  // namespace zelvo
