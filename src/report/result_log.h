// The result log: one document that tells the caller whether the run succeeded and, object by
// object, what went wrong. An object that went through without a message leaves no trace in it.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "commons/exception.h"
#include "xml/xml_document.h"
#include "xml/xml_node.h"

namespace zelvo {

// Where the outcome of a run goes.
class Log {
  public:
    virtual ~Log() = default;

    // Whether the action as a whole went through; false until told otherwise. Failures of single
    // objects do not count.
    virtual void setSuccess(bool success) = 0;
    // Adds the failure, with all that caused it, to the object that failed: the one whose scope a
    // failure has just left, if nothing was logged and no object opened or closed since, or else
    // the current one.
    virtual void log(const ExTraceable& failure) = 0;
    // Opens an object inside the current one. name: as the customer knows it. type: its kind, such
    // as "domain". To be called through ObjectLogger only, which closes what it opened.
    virtual void pushObject(const std::string& name, const std::string& type) = 0;
    // Closes the current object, and drops it if nothing was logged in it. One that is closed
    // because a failure leaves its scope waits for that failure to be logged.
    virtual void popObject() = 0;
    // The number of open objects.
    virtual int getDepth() const = 0;
    // The failure that has just left an object is dropped: the next one to be logged is another.
    virtual void forgetLeftObject() {}
};

// The result log as the document "migration.result" of the session.
class XmlLog : public Log, public tXmlRmkDocument {
  public:
    // Takes the name of the result file from theSession; the file is not touched.
    XmlLog();
    XmlLog(const XmlLog&) = delete;
    XmlLog& operator=(const XmlLog&) = delete;

    void setSuccess(bool success) override { success_ = success; }
    void log(const ExTraceable& failure) override;
    void pushObject(const std::string& name, const std::string& type) override;
    void popObject() override;
    int getDepth() const override;
    void forgetLeftObject() override;

    // Sets the status and writes the file, atomically and down to the disk. Raises what
    // tXmlDocument::saveToFileAtomically raises.
    void save();

  private:
    struct Open {
        // Whether the element must stay.
        bool hasMessages = false;
        // The failures that were under way when the object was opened: one more at its end has
        // left it.
        int failuresUnderWay = 0;
    };

    bool success_ = false;
    std::string fileName_;
    XmlNode current_;
    // One entry for each open object and one for the root.
    std::vector<Open> open_;
    // The object that a failure has just left, a child of the current one; null for none.
    XmlNode left_;
    bool leftHasMessages_ = false;
};

// The result log of the process: valid between the birth and the death of its controller, null
// otherwise.
extern Log* theLog;

// Owns the process's result log. While the result file is absent the run is under way or has died;
// when it is there, it is whole and its status is final.
class LogLifetimeController {
  public:
    // Sets theLog and removes the result file of an earlier run.
    LogLifetimeController();
    // Saves the file unless finish() was called: the way out of a failure. A save that fails here
    // is told in the debug log and lets the first failure go on.
    ~LogLifetimeController();
    LogLifetimeController(const LogLifetimeController&) = delete;
    LogLifetimeController& operator=(const LogLifetimeController&) = delete;

    // Ends the log on the normal way: saves the file and resets theLog to null. Raises what the
    // save raises; theLog is null then too, and no second save is tried.
    void finish();

  private:
    std::unique_ptr<XmlLog> log_;
};

}  // namespace zelvo
