// The panel's configuration file with any bytes in it.
#include <cstdlib>
#include <cstring>

#include "lib/read_configuration.h"
#include "memory_file.h"

namespace {

// A key that cannot be found again is a setting lost; a line feed is in no key and no second line
// in a value.
void check(const conf_data& conf) {
    for (std::size_t i = 0; i < conf.nmemb; ++i) {
        const conf_entry& entry = conf.data[i];
        if (conf_get_r(entry.key, &conf) != entry.value || *entry.key == '\0' ||
            strpbrk(entry.key, " #\n") != nullptr) {
            abort();
        }
        if (i > 0 && cmp_conf(&conf.data[i - 1], &entry) >= 0) abort();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const MemoryFile file(data, size);
    auto* conf = static_cast<conf_data*>(calloc(1, sizeof(conf_data)));
    if (conf_read_file_r(file.path().c_str(), conf) != 0) abort();
    check(*conf);
    conf_free_r(conf);
    return 0;
}
