#include "restorectl/command_line.h"

#include <CLI/CLI.hpp>
#include <climits>

#include "restorectl/places.h"

namespace zelvo {

namespace {

const char* const kFooter =
    "Exit status: 0 when all that was asked was done, 1 for a failure, 2 for wrong usage.\n"
    "The manual page restorectl(8) has the environment and examples.";

// Declares the commands on what the command line is parsed with.
class Grammar {
  public:
    Grammar(CLI::App& app, Settings& settings, Command& command)
        : backup_(*app.add_subcommand("backup", "Look at, bring and remove backups")),
          settings_(settings),
          command_(command) {
        backup_.require_subcommand(1);
        backup_.footer(kFooter);
        declareInspections();
        declareTransfers();
        declareRemovals();
    }

  private:
    void declareInspections() {
        CLI::App& list = add("list", "List backups", listBackups);
        CLI::Option* const packed =
            list.add_flag("--packed", settings_.isPacked, "List the archives of a directory");
        addSelection(list, packed);
        addPath(list, "DIR", "Directory of the archives; default: the top")->needs(packed);
        list.add_option("--mask", settings_.mask, "Regular expression on the archives' names")
            ->needs(packed);
        list.add_flag("--status", settings_.isChecked,
                      "Tell whether each is sound; checks what was never checked")
            ->excludes(packed);

        addPath(add("show", "Show one backup", showBackup), "BACKUP", kBackup)->required();

        CLI::App& check = add("check", "Check whether backups are sound", checkBackups);
        addSelection(check, addPaths(check, "BACKUP",
                                     std::string(kBackup) + "; default: all that are unpacked"));
        check.add_flag("--stored", settings_.takesStored, "Take stored verdicts");

        addSelection(add("usage", "Tell how much room backups take", tellUsage), nullptr);
    }

    void declareTransfers() {
        CLI::App& exporting =
            add("export", "Pack a backup into a signed archive elsewhere", exportBackup);
        addPath(exporting, "BACKUP", "Its info document, a path in the repository")->required();
        addOther(exporting, "--to", "Archive to make, or a directory with \"/\" at its end");

        CLI::App& importing = add("import", "Unpack an archive into the repository", importBackup);
        addOther(importing, "--from", "Archive, with its directory");
        importing
            .add_option("--guid", settings_.guid, "GUID of the backup's object or of its owner")
            ->required();
        importing
            .add_option("--highest-type", settings_.type, "Highest type that its object may have")
            ->check(kTypes)
            ->type_name("TYPE")
            ->default_str("server");

        CLI::App& copying = add("copy", "Copy an archive with its parts", copyArchive);
        addPath(copying, "ARCHIVE", "Path in the repository")->required();
        addOther(copying, "--to", "Archive to make, or a directory with \"/\" at its end");
    }

    void declareRemovals() {
        CLI::App& removing = add("delete", "Remove backups with all their files", deleteBackups);
        addPaths(removing, "BACKUP", kBackup)->required();
        addDryRun(removing);

        CLI::App& rotation = add("rotate", "Remove the oldest backups of a kind", rotateBackups);
        addPath(rotation, "NAME",
                "The backups' path without \"_\" and date: DIR/PREFIX_info, or with --packed "
                "DIR/NAME.tgz")
            ->required();
        rotation.add_option("--keep", settings_.keep, "How many stay")
            ->required()
            ->check(CLI::Range(0, INT_MAX))
            ->type_name("NUMBER");
        CLI::Option* const packed =
            rotation.add_flag("--packed", settings_.isPacked, "Rotate archives");
        rotation.add_option("--owner", settings_.owner, "GUID of the backups' owner")
            ->excludes(packed);
        addDryRun(rotation);
    }

    // Adds a command, with what all of them take.
    CLI::App& add(const std::string& name, const std::string& purpose, Command command) {
        CLI::App& added = *backup_.add_subcommand(name, purpose);
        added.footer(kFooter);
        added.callback([this, command] { command_ = command; });
        // Not with CLI11's own look at the environment: it would fill the options of commands that
        // were not called, and the variable would win over this option.
        added
            .add_option("--repository", settings_.repository.text,
                        "FTP URL without password, or local path; default: RESTORECTL_REPOSITORY, "
                        "or else the panel's own")
            ->type_name("PLACE")
            ->each([this](const std::string&) { settings_.repository.isSaid = true; });
        added
            .add_option("--credentials-file", settings_.repository.credentialsFile,
                        "File with login=NAME and password=TEXT; default: RESTORECTL_LOGIN and "
                        "RESTORECTL_PASSWORD")
            ->type_name("FILE");
        added.add_flag("--active", settings_.isActive, "Let the FTP server open data connections");
        added.add_flag("--json", settings_.asJson, "Print a JSON document");
        added.add_flag("--verbose,-v", settings_.isVerbose, "Tell each step on standard error");
        return added;
    }

    static CLI::Option* addNames(CLI::App& command, const std::string& name,
                                 std::vector<std::string>& values, const std::string& meaning) {
        return command.add_option(name, values, meaning)->type_name("");
    }
    CLI::Option* addPaths(CLI::App& command, const std::string& name, const std::string& meaning) {
        return addNames(command, name, settings_.paths, meaning);
    }
    CLI::Option* addPath(CLI::App& command, const std::string& name, const std::string& meaning) {
        return addPaths(command, name, meaning)->expected(1);
    }

    // other: what a selection makes no sense with; may be null.
    void addSelection(CLI::App& command, CLI::Option* other) {
        CLI::Option* const type =
            command.add_option("--type", settings_.listedType, "Type of the object")
                ->check(kTypes)
                ->type_name("TYPE");
        CLI::Option* const guid =
            command.add_option("--guid", settings_.guid, "GUID of the object")->needs(type);
        CLI::Option* const owner =
            command.add_option("--owner", settings_.owner, "GUID of the owner");
        if (other != nullptr) {
            for (CLI::Option* const option : {type, guid, owner}) {
                option->excludes(other);
            }
        }
    }

    void addOther(CLI::App& command, const std::string& name, const std::string& meaning) {
        command.add_option(name, settings_.other.text, meaning)->required()->type_name("PLACE");
        command
            .add_option("--other-credentials-file", settings_.other.credentialsFile,
                        "Credentials of that; default: RESTORECTL_OTHER_LOGIN and "
                        "RESTORECTL_OTHER_PASSWORD")
            ->type_name("FILE");
    }

    void addDryRun(CLI::App& command) {
        command.add_flag("--dry-run,-n", settings_.isDryRun,
                         "Tell what would be removed and why, and remove nothing");
    }

    static constexpr const char* kBackup =
        "Info document (.xml) or archive, a path in the repository";
    const CLI::IsMember kTypes{{"server", "reseller", "client", "domain"}};

    CLI::App& backup_;
    Settings& settings_;
    Command& command_;
};

// CLI11 would take "[a,b]", which can be the name of one file, for the names of two, and "++" for a
// mark of its own.
void requirePlainWords(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        const std::string word = argv[i];
        if (word == "++" || (word.starts_with('[') && word.ends_with(']'))) {
            throw UsageError("'" + word + "' is ambiguous: write \"./\" in front of it");
        }
    }
}

void requireSense(const Settings& settings, Command command) {
    const bool hasGuid = !settings.guid.empty();
    if (command != importBackup && !settings.listedType.empty() &&
        hasGuid == (settings.listedType == "server")) {
        throw UsageError("--type " + settings.listedType +
                         (hasGuid ? " takes no --guid" : " takes --guid"));
    }
    if (command == rotateBackups && !settings.isPacked && settings.owner.empty()) {
        throw UsageError("rotate takes --owner or --packed");
    }
}

}  // namespace

std::optional<int> parseCommandLine(int argc, char** argv, Settings& settings, Command& command) {
    requirePlainWords(argc, argv);
    CLI::App app("Backup repositories of the panel", "restorectl");
    app.set_version_flag("--version", "restorectl " RESTORECTL_VERSION);
    app.require_subcommand(1);
    app.footer(kFooter);
    const Grammar grammar(app, settings, command);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& ending) {
        return app.exit(ending) == 0 ? kSuccess : kWrongUsage;
    }
    requireSense(settings, command);
    return std::nullopt;
}

}  // namespace zelvo
