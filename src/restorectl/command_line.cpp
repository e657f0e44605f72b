#include "restorectl/command_line.h"

#include <CLI/CLI.hpp>
#include <climits>

#include "restorectl/places.h"

namespace zelvo {

namespace {

const char* const kLogin = "RESTORECTL_LOGIN";
const char* const kPassword = "RESTORECTL_PASSWORD";
const char* const kOtherLogin = "RESTORECTL_OTHER_LOGIN";
const char* const kOtherPassword = "RESTORECTL_OTHER_PASSWORD";

const char* const kFooter =
    "Exit status: 0 when all that was asked was done, 1 for a failure, 2 for wrong usage.\n"
    "The manual page restorectl(8) has the environment and examples.";

// Places as they were said, before their credentials are read.
struct SaidPlaces {
    std::string repository;
    std::string credentialsFile;
    std::string other;
    std::string otherCredentialsFile;
};

// Declares the commands on what the command line is parsed with.
class Grammar {
  public:
    Grammar(CLI::App& app, Settings& settings, Command& command, SaidPlaces& said)
        : backup_(*app.add_subcommand("backup", "Look at, bring and remove backups")),
          settings_(settings),
          command_(command),
          said_(said) {
        backup_.require_subcommand(1);
        backup_.footer(kFooter);
        declareInspections();
        declareTransfers();
        declareRemovals();
    }

  private:
    void declareInspections() {
        CLI::App& list = add("list", "List backups", listBackups);
        addSelection(list);
        CLI::Option* const packed =
            list.add_flag("--packed", settings_.isPacked, "List the archives of a directory");
        addPath(list, "DIR", "Directory of the archives; default: the top")->needs(packed);
        list.add_option("--mask", settings_.mask, "Regular expression on the archives' names")
            ->needs(packed);
        list.add_flag("--status", settings_.isChecked,
                      "Tell whether each is sound; checks what was never checked")
            ->excludes(packed);

        addPath(add("show", "Show one backup", showBackup), "BACKUP", kBackup)->required();

        CLI::App& check = add("check", "Check whether backups are sound", checkBackups);
        addSelection(check);
        addPaths(check, "BACKUP", std::string(kBackup) + "; default: all that are unpacked");
        check.add_flag("--stored", settings_.takesStored, "Take stored verdicts");

        addSelection(add("usage", "Tell how much room backups take", tellUsage));
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
        added
            .add_option("--repository", said_.repository,
                        "FTP URL without password, or local path; default: the panel's own")
            ->envname("RESTORECTL_REPOSITORY")
            ->type_name("PLACE");
        added
            .add_option("--credentials-file", said_.credentialsFile,
                        std::string("File with login=NAME and password=TEXT; default: ") + kLogin +
                            " and " + kPassword)
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

    void addSelection(CLI::App& command) {
        CLI::Option* const type =
            command.add_option("--type", settings_.listedType, "Type of the object")
                ->check(kTypes)
                ->type_name("TYPE");
        command.add_option("--guid", settings_.guid, "GUID of the object")->needs(type);
        command.add_option("--owner", settings_.owner, "GUID of the owner");
    }

    void addOther(CLI::App& command, const std::string& name, const std::string& meaning) {
        command.add_option(name, said_.other, meaning)->required()->type_name("PLACE");
        command
            .add_option("--other-credentials-file", said_.otherCredentialsFile,
                        std::string("Credentials of that; default: ") + kOtherLogin + " and " +
                            kOtherPassword)
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
    SaidPlaces& said_;
};

void requireSense(const Settings& settings, Command command) {
    const bool isOfObject = !settings.listedType.empty() && settings.listedType != "server";
    if (isOfObject && settings.guid.empty()) {
        throw UsageError("--type " + settings.listedType + " takes --guid");
    }
    if (command == rotateBackups && !settings.isPacked && settings.owner.empty()) {
        throw UsageError("rotate takes --owner or --packed");
    }
}

}  // namespace

std::optional<int> parseCommandLine(int argc, char** argv, Settings& settings, Command& command) {
    CLI::App app("Backup repositories of the panel", "restorectl");
    app.set_version_flag("--version", "restorectl " RESTORECTL_VERSION);
    app.require_subcommand(1);
    app.footer(kFooter);
    SaidPlaces said;
    const Grammar grammar(app, settings, command, said);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& ending) {
        return app.exit(ending) == 0 ? kSuccess : kWrongUsage;
    }
    requireSense(settings, command);
    settings.repository = readPlace(said.repository, said.credentialsFile, kLogin, kPassword);
    settings.other = readPlace(said.other, said.otherCredentialsFile, kOtherLogin, kOtherPassword);
    return std::nullopt;
}

}  // namespace zelvo
