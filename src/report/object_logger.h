// The scope of one object in both logs.
#pragma once

#include <string>

namespace zelvo {

// A local around the work on one object: what is logged while it lives belongs to the object. A
// failure that leaves the scope closes the object's element as well.
class ObjectLogger {
  public:
    // Needs theLog and theDebugLog. name: as the customer knows the object. type: its kind, such
    // as "domain".
    ObjectLogger(const std::string& name, const std::string& type);
    ~ObjectLogger();
    ObjectLogger(const ObjectLogger&) = delete;
    ObjectLogger& operator=(const ObjectLogger&) = delete;

  private:
    std::string name_;
    std::string type_;
};

}  // namespace zelvo
