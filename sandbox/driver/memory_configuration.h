// The panel's configuration in memory, so that no test depends on a panel.
#pragma once

#include <cstdlib>
#include <string>

#include "lib/read_configuration.h"

// Is the process's configuration for its lifetime.
class MemoryConfiguration {
  public:
    MemoryConfiguration() {
        theQrdConfHash = static_cast<conf_data*>(calloc(1, sizeof(conf_data)));
    }
    ~MemoryConfiguration() {
        conf_free_r(theQrdConfHash);
        theQrdConfHash = nullptr;
        arrayInitialized = 0;
    }
    MemoryConfiguration(const MemoryConfiguration&) = delete;
    MemoryConfiguration& operator=(const MemoryConfiguration&) = delete;

    void set(const char* key, const std::string& value) const {
        if (conf_set_r(key, value.c_str(), theQrdConfHash) != 0) abort();
    }
};
