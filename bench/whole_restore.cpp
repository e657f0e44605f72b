#include "whole_restore.h"

#include <fstream>
#include <sstream>
#include <stdexcept>
#include <utility>

#include "command_log.h"

namespace bench {

namespace fs = std::filesystem;

Restore::Restore(std::string deployer, const fs::path& directory, const Shape& shape,
                 std::vector<std::string> options)
    : deployer_(std::move(deployer)),
      options_(std::move(options)),
      original_(directory / shape.name / "original"),
      session_(directory / shape.name / "session") {
    fs::create_directories(original_);
    shape.write(original_, shape.count);
}

Cost Restore::measure() const {
    fs::remove_all(session_);
    fs::copy(original_, session_, fs::copy_options::recursive);
    std::vector<std::string> command = {deployer_, "--deploy-dump", "--session-path", session_};
    command.insert(command.end(), options_.begin(), options_.end());
    const Cost cost = costOfProgram(command);
    checkVerdict();
    return cost;
}

Cost Restore::measureBare() const {
    return costToldByChild([&] {
        const auto commands = readCommands(log());
        return costOf([&] {
            for (const BareCommand& command : commands) {
                command.run();
            }
        });
    });
}

void Restore::checkVerdict() const {
    std::ostringstream result;
    result << std::ifstream(session_ / "migration.result").rdbuf();
    if (result.str().find("status=\"success\"") == std::string::npos ||
        result.str().find("<message") != std::string::npos) {
        throw std::runtime_error("the restore failed: " + result.str());
    }
}

}  // namespace bench
