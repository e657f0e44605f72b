// The panel's configuration file: read once into memory, asked by name or by index, with
// compile-time defaults behind the well-known variables. Nothing here raises an exception.
#pragma once

#include <cstddef>

struct conf_entry {
    char* key;    // owned
    char* value;  // owned
};

// A parsed file. A zeroed record is an empty one; conf_free_r takes one made with calloc.
struct conf_data {
    conf_entry* data;   // owned; null before the first conf_init_r
    std::size_t nmemb;  // entries in use
    std::size_t size;   // entries allocated
    int finalized;      // 1 when data is sorted by key
};

// The well-known variables in the order of their indexes: name and compile-time default.
#define QRD_CONF_VARIABLES(X)                               \
    X(ZELVO_MAILNAMES_D, "/var/qmail/mailnames")            \
    X(COURIER_IMAP_ROOT_D, "/")                             \
    X(RBLSMTPD, "/usr/sbin/rblsmtpd")                       \
    X(CGI_PHP_BIN, "dynamic")                               \
    X(CLIENT_PHP_BIN, "/usr/local/qrd/bin/php-cli")         \
    X(LIB_CRYPTO_PATH, "/lib/libcrypto.so")                 \
    X(LIB_SSL_PATH, "/lib/libssl.so")                       \
    X(AWSTATS_DOC_D, "/var/www/html/awstats")               \
    X(AWSTATS_TOOLS_D, "/usr/share/awstats")                \
    X(AWSTATS_BIN_D, "/var/www/cgi-bin/awstats")            \
    X(AWSTATS_ETC_D, "/etc/awstats")                        \
    X(CATALINA_HOME, "/usr/share/tomcat6")                  \
    X(MAILMAN_VAR_D, "/var/lib/mailman")                    \
    X(MAILMAN_ROOT_D, "/usr/lib/mailman")                   \
    X(PGSQL_DATA_D, "/var/lib/pgsql/data")                  \
    X(PGSQL_BIN_D, "/usr/bin")                              \
    X(MYSQL_BIN_D, "/usr/bin")                              \
    X(MYSQL_VAR_D, "/var/lib/mysql")                        \
    X(LOGROTATE, "/usr/local/qrd/logrotate/sbin/logrotate") \
    X(WEB_STAT, "/usr/bin/webalizer")                       \
    X(DUMP_D, "/var/lib/qrd/dumps")                         \
    X(DUMP_TMP_D, "/tmp")                                   \
    X(NAMED_RUN_ROOT_D, "/var/named/chroot")                \
    X(FTPD_CONF_INC, "/etc/proftpd.include")                \
    X(HTTPD_SERVICE, "httpd")                               \
    X(HTTPD_LOG_D, "/var/log/httpd")                        \
    X(HTTPD_INCLUDE_D, "/etc/httpd/conf.d")                 \
    X(HTTPD_CONF_D, "/etc/httpd/conf")                      \
    X(HTTPD_VHOSTS_D, "/var/www/vhosts")                    \
    X(PRODUCT_ROOT_D, "/usr/local/qrd")

// The indexes of the variables, 1 to 30, between two sentinels.
enum qrd_conf_variable {
    _MIN_POSSIBLE_QRD_CONF_VAR_NAME = 0,
#define QRD_CONF_INDEX(name, value) name,
    QRD_CONF_VARIABLES(QRD_CONF_INDEX)
#undef QRD_CONF_INDEX
        _MAX_POSSIBLE_QRD_CONF_VAR_NAME
};

constexpr int kQrdConfTableSize = _MAX_POSSIBLE_QRD_CONF_VAR_NAME + 1;
static_assert(kQrdConfTableSize == 32);

// The parsed configuration file; null until a read has succeeded.
extern conf_data* theQrdConfHash;
// Values found in the file, by index; they point into theQrdConfHash.
extern const char* theQrdConfArray[kQrdConfTableSize];
// 1 once theQrdConfArray has been zeroed.
extern int arrayInitialized;
extern const char* const theQrdConfNames[kQrdConfTableSize];
extern const char* const theQrdConfDefauls[kQrdConfTableSize];

// Reads a file of lines "KEY VALUE # comment". A bad line is logged and skipped; of two
// definitions of a key the later one counts. Returns 0, or -1 with errno set and what went wrong
// logged; the entries read so far are then still there.
//
// A value ends at a "#" or at the end of the line, line feed included. Of the white space in front
// of that end the last character is dropped when it is an odd number of characters; all else stays
// in the value. Existing files count on it.
int conf_read_file_r(const char* fileName, conf_data* conf);

// Makes room for one more entry. Returns 0, or -1 with errno ENOMEM.
int conf_init_r(conf_data* conf);

// Stores copies of key and value; the value of a known key is replaced. Returns 0, or -1 with
// errno ENOMEM.
int conf_set_r(const char* key, const char* value, conf_data* conf);

// Returns the value of a key, owned by conf, or null.
const char* conf_get_r(const char* key, const conf_data* conf);

// Sorts the entries by key, if they are not, which makes conf_get_r a binary search.
void conf_finalize_r(conf_data* conf);

// Frees the entries, the array and conf itself, which was made with malloc or calloc, or is null.
void conf_free_r(conf_data* conf);

// Compares the keys of two conf_entry as strcmp does, in the form that qsort and bsearch take.
int cmp_conf(const void* left, const void* right);

// Brings "/etc/qrd/qrd.conf" into memory if it is not there. Returns 0 when it is, otherwise the
// result of the failed read.
int autoprepend();

// The functions below return strings that live until the end of the process.

// Returns the value that the file gives to a variable of any name, or null. While no file could be
// read each call tries again.
const char* qrdConfGet(const char* name);

// Returns the value that the file gives to the variable with this index, or null.
const char* qrdConfGetByIndex(int index);

// Returns the value in the file or else the compile-time default; null for an index outside 0 to
// 31 only.
const char* qrdConfGetDefaultByIndex(int index);

// The same by name. A name outside the table has no default: it gives null and a message, even if
// the file knows it.
const char* qrdConfGetDefault(const char* name);
