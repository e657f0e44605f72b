#include "report/result_log.h"

#include <unistd.h>

#include <exception>
#include <utility>

#include "commons/session.h"
#include "report/debug_log.h"
#include "report/xml_formatter.h"

namespace zelvo {

Log* theLog = nullptr;

XmlLog::XmlLog()
    : fileName_(theSession->getResultFileName()),
      current_(nullptr, nullptr),
      open_{{true}},
      left_(nullptr, nullptr) {
    initNewDoc("execution-result");
    current_ = XmlNode(doc(), root());
}

void XmlLog::log(const ExTraceable& failure) {
    // What is told on the way out of another failure is not the one that is waited for.
    const bool isOnTheWayOut = std::uncaught_exceptions() > open_.back().failuresUnderWay;
    const bool isOfLeftObject = left_.node() != nullptr && !isOnTheWayOut;
    XmlMsgFormatter formatter(*this,
                              newChild(isOfLeftObject ? left_.node() : current_.node(), "message"));
    failure.accept(formatter);
    open_.back().hasMessages = true;
    if (isOfLeftObject) {
        leftHasMessages_ = true;
        forgetLeftObject();
    }
}

void XmlLog::pushObject(const std::string& name, const std::string& type) {
    forgetLeftObject();
    xmlNode* object = newChild(current_.node(), "object");
    addAttribute(object, "name", name);
    addAttribute(object, "type", type);
    current_ = XmlNode(doc(), object);
    open_.push_back({false, std::uncaught_exceptions()});
}

void XmlLog::popObject() {
    forgetLeftObject();
    left_ = current_;
    current_ = current_.getParent();
    const Open closed = open_.back();
    open_.pop_back();
    leftHasMessages_ = closed.hasMessages;
    open_.back().hasMessages = open_.back().hasMessages || closed.hasMessages;
    if (std::uncaught_exceptions() <= closed.failuresUnderWay) {
        forgetLeftObject();
    }
}

void XmlLog::forgetLeftObject() {
    // An element that got no message goes.
    if (left_.node() != nullptr && !leftHasMessages_) {
        removeNode(left_.node());
    }
    left_ = XmlNode(nullptr, nullptr);
}

int XmlLog::getDepth() const { return static_cast<int>(open_.size()) - 1; }

void XmlLog::save() {
    forgetLeftObject();
    addAttribute(root(), "status", success_ ? "success" : "error");
    saveToFileAtomically(fileName_, Durability::kSynced);
}

LogLifetimeController::LogLifetimeController() : log_(std::make_unique<XmlLog>()) {
    theLog = log_.get();
    unlink(theSession->getResultFileName().c_str());
}

LogLifetimeController::~LogLifetimeController() {
    if (!log_) {
        return;
    }
    try {
        finish();
    } catch (const ExTraceable& failure) {
        if (theDebugLog != nullptr) {
            theDebugLog->log(failure);
        }
    } catch (const std::exception& failure) {
        if (theDebugLog != nullptr) {
            theDebugLog->log(std::string(failure.what()));
        }
    }
}

void LogLifetimeController::finish() {
    const std::unique_ptr<XmlLog> log = std::move(log_);
    theLog = nullptr;
    log->save();
}

}  // namespace zelvo
