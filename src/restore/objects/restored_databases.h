// What the panel made of the databases of one owner: the numbers by which it knows them and their
// users. Whoever registers an object that uses them has to name them.
#pragma once

#include <string>
#include <vector>

namespace zelvo {

struct RestoredDatabases {
    struct Database {
        // The panel's number for it.
        std::string id;
        // What the site application that it belongs to calls it; empty for none.
        std::string sappParam;
    };
    struct User {
        // The panel's numbers for its database, empty for one that was there already, and for it.
        std::string databaseId;
        std::string id;
    };

    std::vector<Database> databases;
    std::vector<User> users;
    // A user of some database could not be restored.
    bool userFailed = false;
};

}  // namespace zelvo
