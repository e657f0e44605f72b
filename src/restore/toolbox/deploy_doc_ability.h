// The settings of a run and the option builders that all object deployers share.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "content/cid.h"
#include "content/content_unpacker.h"
#include "exec/cli_exec.h"
#include "report/progress_report.h"
#include "xml/xml_node.h"

struct _xmlDoc;

namespace zelvo {

// Base of the deployers. It carries no data of its own: the settings are one set for the run,
// filled before any deployer runs.
class tDeployDocAbility {
  public:
    // The dump, its root element, and a handle on the two.
    static _xmlDoc* doc_;
    static _xmlNode* xnode_root_;
    static XmlNode root;
    // Name of the domain template of the command line; empty for none.
    static std::string domainTemplate;
    // Users are to be notified of their new accounts.
    static bool notifyUsers;
    // Where the content archives come from; never null while objects are restored.
    static std::shared_ptr<ContentUnpacker> extractor;
    // Login of the user who owns the backup, empty for the administrator, and that user's type:
    // "admin", "client" or "domain-admin".
    static std::string backupUser;
    static std::string backupUserType;
    // Domains are suspended while they are restored.
    static bool suspend;
    // The progress of the run; not owned.
    static tDeployProgressReport* report_ptr_;

    // The builders below append to cmd what an element asks for.

    // "-lock-screen false" when @lock-screen is "false".
    static void getLockScreen(const XmlNode& node, CmdLine& cmd);
    // "-max-button-length" with @max-button-length when that is there.
    static void getMaxButtonLength(const XmlNode& node, CmdLine& cmd);

    // These return whether they appended anything.

    // "-locale" with the contact data's locale, looked for below `preferences` and then directly.
    static bool setLocale(CmdLine& cmd, const XmlNode& node);
    // "-country", "-zip" and "-state", an American location completed from the administrator's.
    static bool setCountry(CmdLine& cmd, const XmlNode& node);
    // "-NAME TEXT" of a `pinfo` element.
    static bool setPinfo(CmdLine& cmd, const XmlNode& node);
    // The same, but nothing for the items of setLocale and setCountry. Raises UnsafeName.
    static bool setSafePinfo(CmdLine& cmd, const XmlNode& node);

    // The status words of a `status` element, joined with commas: "enabled", or whatever disabled
    // the object.
    static std::string parseStatus(const XmlNode& node);
    // "-status" and the status words.
    static void addStatus(CmdLine& cmd, const XmlNode& node);

    // True when the element has content of that type.
    static bool hasCid(const XmlNode& node, const std::string& type);
    // The element's content of that type. Raises tError_XPath_CantEvaluate when there is none.
    static Cid getCid(const XmlNode& node, const std::string& type);
    // Loads it into cid; returns false and leaves cid as it was when there is none.
    static bool getCid(const XmlNode& node, const std::string& type, Cid& cid);

    // Loads the database dump of cid through the extractor. database: its name. type: of its
    // server, "mysql", "postgresql" or "mssql". host, port: of the server, empty for the client's
    // own default. Raises what unpackDb raises.
    static void unzipdb(const std::string& database, const std::string& type, const Cid& cid,
                        const std::string& login, const std::string& password,
                        const std::string& host, const std::string& port = "");

    // "-passwd", with the element's password, or a random one for an empty one, in the environment.
    static void getPasswordOpts(const XmlNode& node, CmdLine& cmd);

    using NamedValues = std::vector<std::pair<std::string, std::string>>;
    // "-NAME VALUE" for each scripting setting of the element's attributes; the pairs are appended
    // to list too. forUpdate: of no effect.
    static void getScriptingOpts(const XmlNode& node, bool forUpdate, CmdLine& cmd,
                                 NamedValues& list);

    // "-login", the password, with full the disk quota, and the shell of a `sysuser` element.
    // lowerName: convert the login to lower case. Asks the panel for its shells where it has not
    // been asked for this one. Raises NumberConversionError for a quota that is no number,
    // AssertionFailed for a password of no known type.
    static void getSysUserOpts(const XmlNode& node, CmdLine& cmd, bool lowerName, bool full);

    // Sets the element's @skin on an object. A failure goes to the debug log alone: a skin that
    // this server lacks is no failure of the object.
    static void tryInstallSkin(const XmlNode& node, const std::string& utility,
                               const std::string& name);
};

// The deployer of one kind of object, fit for a walk over a node set of the dump.
class XmlDeployDocAbility : public tXmlOperator, public virtual tDeployDocAbility {
  public:
    void act(_xmlNode* node) const final { act(XmlNode(doc_, node)); }

    // Deploys the object that the element describes. Raises what costs the object; the failures of
    // its parts are told.
    virtual void act(XmlNode node) const = 0;
};

// Has the deployer act on each node that the expression finds below the element, in document order.
// The failure of one is told, and the next one follows. Returns whether all went through.
bool deployEach(const XmlNode& node, const std::string& expr, const XmlDeployDocAbility& deployer);

// "-NAME false" when a `permission`'s @value is "false", otherwise "-NAME true". Raises UnsafeName.
void addPermission(CmdLine& cmd, const XmlNode& permission);

}  // namespace zelvo
