#include "lib/read_configuration.h"

#include <syslog.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "lib/liblog.h"

namespace {

constexpr const char* kConfigurationFile = "/etc/qrd/qrd.conf";
constexpr int kLogPriority = LOG_USER | LOG_WARNING;
constexpr std::size_t kGrowth = 20;

// The line that was read last, whatever its length.
class Line {
  public:
    Line() = default;
    ~Line() { free(text_); }
    Line(const Line&) = delete;
    Line& operator=(const Line&) = delete;

    // Reads the next line with its line feed; false at the end of the file and on failure.
    bool read(FILE* file) { return getdelim(&text_, &size_, '\n', file) != -1; }
    char* text() { return text_; }

  private:
    char* text_ = nullptr;
    std::size_t size_ = 0;
};

bool isSpace(char c) { return isspace(static_cast<unsigned char>(c)) != 0; }

bool isKeyCharacter(char c) { return isalnum(static_cast<unsigned char>(c)) != 0 || c == '_'; }

bool isEnd(char c) { return c == '#' || c == '\0'; }

char* skipSpace(char* text) {
    while (isSpace(*text)) {
        ++text;
    }
    return text;
}

// Returns the end of the value that begins here. A white-space character ends it only if what
// follows is the end and what stands before is no white-space character that could have ended it.
char* findValueEnd(char* value) {
    char* candidate = nullptr;
    char* walk = value + 1;
    for (; !isEnd(*walk); ++walk) {
        candidate = candidate == nullptr && isSpace(*walk) ? walk : nullptr;
    }
    return candidate != nullptr ? candidate : walk;
}

// Takes one line into conf, or logs what is wrong with it. Fails as conf_set_r does.
int takeLine(char* line, conf_data* conf) {
    char* const key = skipSpace(line);
    if (isEnd(*key)) {
        return 0;
    }
    char* const keyEnd = std::find_if_not(key, key + strlen(key), isKeyCharacter);
    if (!isSpace(*keyEnd)) {
        zelvo_log(kLogPriority,
                  "Invalid variable definition %s\nExpected a space after variable name\n", key);
        return 0;
    }
    char* const value = skipSpace(keyEnd + 1);
    if (isEnd(*value)) {
        zelvo_log(kLogPriority, "Invalid variable definition %s\nExpected a value", key);
        return 0;
    }
    *findValueEnd(value) = '\0';
    *keyEnd = '\0';
    return conf_set_r(key, value, conf);
}

int readLines(FILE* file, conf_data* conf) {
    Line line;
    while (line.read(file)) {
        if (takeLine(line.text(), conf) != 0) {
            return -1;
        }
    }
    conf_finalize_r(conf);
    if (feof(file) && !ferror(file)) {
        return 0;
    }
    const int number = errno;
    zelvo_log(kLogPriority, "Unable to read configuration file: %s", strerror(number));
    errno = number;
    return -1;
}

// An empty index cannot be told from an unfilled one, so the cache is cleared before its first use
// and never again.
void initializeArray() {
    if (arrayInitialized == 0) {
        arrayInitialized = 1;
        std::fill_n(theQrdConfArray, kQrdConfTableSize, nullptr);
    }
}

bool isInTable(int index) {
    return index >= _MIN_POSSIBLE_QRD_CONF_VAR_NAME && index <= _MAX_POSSIBLE_QRD_CONF_VAR_NAME;
}

conf_entry* findLinearly(const char* key, const conf_data* conf) {
    conf_entry* const end = conf->data + conf->nmemb;
    conf_entry* const found =
        std::find_if(conf->data, end, [key](const conf_entry& e) { return !strcmp(e.key, key); });
    return found == end ? nullptr : found;
}

int failWithoutMemory(const char* format) __attribute__((format(printf, 1, 0)));
int failWithoutMemory(const char* format) {
    zelvo_log(kLogPriority, format, strerror(ENOMEM));
    errno = ENOMEM;
    return -1;
}

}  // namespace

conf_data* theQrdConfHash = nullptr;
const char* theQrdConfArray[kQrdConfTableSize];
int arrayInitialized = 0;

const char* const theQrdConfNames[kQrdConfTableSize] = {"_MIN_POSSIBLE_QRD_CONF_VAR_NAME",
#define QRD_CONF_NAME(name, value) #name,
                                                        QRD_CONF_VARIABLES(QRD_CONF_NAME)
#undef QRD_CONF_NAME
                                                            "_MAX_POSSIBLE_QRD_CONF_VAR_NAME"};

const char* const theQrdConfDefauls[kQrdConfTableSize] = {"_MIN_POSSIBLE_QRD_CONF_VAR_VALUE",
#define QRD_CONF_DEFAULT(name, value) value,
                                                          QRD_CONF_VARIABLES(QRD_CONF_DEFAULT)
#undef QRD_CONF_DEFAULT
                                                              "_MAX_POSSIBLE_QRD_CONF_VAR_VALUE"};

int conf_read_file_r(const char* fileName, conf_data* conf) {
    if (conf_init_r(conf) != 0) {
        return -1;
    }
    FILE* const file = fopen(fileName, "re");
    if (file == nullptr) {
        const int number = errno;
        zelvo_log(kLogPriority, "unable to open configuration file %s: %s\n", fileName,
                  strerror(number));
        errno = number;
        return -1;
    }
    const int result = readLines(file, conf);
    const int number = errno;
    fclose(file);
    errno = number;
    return result;
}

int conf_init_r(conf_data* conf) {
    if (conf->data == nullptr) {
        conf->nmemb = 0;
        conf->size = 0;
        conf->finalized = 1;
        conf->data = static_cast<conf_entry*>(calloc(kGrowth, sizeof(conf_entry)));
        if (conf->data == nullptr) {
            errno = ENOMEM;
            return -1;
        }
        conf->size = kGrowth;
        return 0;
    }
    if (conf->nmemb < conf->size) {
        return 0;
    }
    const std::size_t size = std::max(2 * conf->size, conf->nmemb + kGrowth);
    void* const larger = reallocarray(conf->data, size, sizeof(conf_entry));
    if (larger == nullptr) {
        return failWithoutMemory("Unable to read configuration: %s");
    }
    conf->data = static_cast<conf_entry*>(larger);
    conf->size = size;
    return 0;
}

int conf_set_r(const char* key, const char* value, conf_data* conf) {
    if (conf_init_r(conf) != 0) {
        return -1;
    }
    char* const keyCopy = strdup(key);
    char* const valueCopy = strdup(value);
    if (keyCopy == nullptr || valueCopy == nullptr) {
        const int result = failWithoutMemory("Unable to form configuration: %s");
        free(keyCopy);
        free(valueCopy);
        return result;
    }
    if (conf_entry* const known = findLinearly(key, conf)) {
        free(keyCopy);
        free(known->value);
        known->value = valueCopy;
    } else {
        conf->data[conf->nmemb++] = {keyCopy, valueCopy};
        conf->finalized = 0;
    }
    return 0;
}

const char* conf_get_r(const char* key, const conf_data* conf) {
    if (conf->nmemb == 0) {
        return nullptr;
    }
    const conf_entry* found = nullptr;
    if (conf->finalized != 0) {
        const conf_entry wanted = {const_cast<char*>(key), nullptr};
        found = static_cast<const conf_entry*>(
            bsearch(&wanted, conf->data, conf->nmemb, sizeof(conf_entry), cmp_conf));
    } else {
        found = findLinearly(key, conf);
    }
    return found != nullptr ? found->value : nullptr;
}

void conf_finalize_r(conf_data* conf) {
    if (conf->finalized == 0) {
        qsort(conf->data, conf->nmemb, sizeof(conf_entry), cmp_conf);
        conf->finalized = 1;
    }
}

void conf_free_r(conf_data* conf) {
    if (conf == nullptr) {
        return;
    }
    for (std::size_t i = 0; i < conf->nmemb; ++i) {
        free(conf->data[i].key);
        free(conf->data[i].value);
    }
    free(conf->data);
    free(conf);
}

int cmp_conf(const void* left, const void* right) {
    return strcmp(static_cast<const conf_entry*>(left)->key,
                  static_cast<const conf_entry*>(right)->key);
}

int autoprepend() {
    if (theQrdConfHash != nullptr) {
        return 0;
    }
    initializeArray();
    auto* const conf = static_cast<conf_data*>(calloc(1, sizeof(conf_data)));
    if (conf == nullptr) {
        messlog2(0, 1, "Not enough memory to allocate Zelvo runtime configuration structure\n");
        return -1;
    }
    const int result = conf_read_file_r(kConfigurationFile, conf);
    if (result != 0) {
        conf_free_r(conf);
        return result;
    }
    theQrdConfHash = conf;
    return 0;
}

const char* qrdConfGet(const char* name) {
    if (theQrdConfHash == nullptr && autoprepend() != 0) {
        return nullptr;
    }
    return conf_get_r(name, theQrdConfHash);
}

const char* qrdConfGetByIndex(int index) {
    if (!isInTable(index)) {
        return nullptr;
    }
    initializeArray();
    if (theQrdConfArray[index] == nullptr) {
        theQrdConfArray[index] = qrdConfGet(theQrdConfNames[index]);
    }
    return theQrdConfArray[index];
}

const char* qrdConfGetDefaultByIndex(int index) {
    if (!isInTable(index)) {
        return nullptr;
    }
    const char* const value = qrdConfGetByIndex(index);
    return value != nullptr ? value : theQrdConfDefauls[index];
}

const char* qrdConfGetDefault(const char* name) {
    for (int index = _MIN_POSSIBLE_QRD_CONF_VAR_NAME; index < _MAX_POSSIBLE_QRD_CONF_VAR_NAME;
         ++index) {
        if (strcmp(theQrdConfNames[index], name) == 0) {
            return qrdConfGetDefaultByIndex(index);
        }
    }
    messlog2(0, 1, "variable '%s' isn't found neither in %s nor in compile-time defaults\n", name,
             kConfigurationFile);
    return nullptr;
}
