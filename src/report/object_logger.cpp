#include "report/object_logger.h"

#include "report/debug_log.h"
#include "report/result_log.h"

namespace zelvo {

ObjectLogger::ObjectLogger(const std::string& name, const std::string& type)
    : name_(name), type_(type) {
    theLog->pushObject(name_, type_);
    theDebugLog->log("=> " + name_ + " " + type_);
}

ObjectLogger::~ObjectLogger() {
    try {
        theDebugLog->log("++ " + name_ + " " + type_);
        theLog->popObject();
    } catch (const std::exception&) {
        // Only a lack of memory comes here. The failure that is under way says more.
        return;
    }
}

}  // namespace zelvo
