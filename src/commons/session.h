// The session: the directory in which a run finds its input and leaves its output, and the only
// place that spells the names of the files in it.
#pragma once

#include <string>

namespace zelvo {

// The files of one session. All names are the session path as it was given, "/" and a file name.
class SessionFiles {
  public:
    // path: the session directory. It and "archives" in it are made if they are missing, with all
    // missing parents, for root and the panel's group, with mode 0750; what exists is left as it
    // is. Raises UnableToCreateSession when the path is no directory in the end.
    explicit SessionFiles(const std::string& path);

    // Removes the directory with all that is in it. Raises boost::filesystem::filesystem_error.
    void remove();

    // The dump to translate.
    std::string getDumpFileName() const;
    // The canonical dump.
    std::string getZelvoDumpFileName() const;
    // The debug log.
    std::string getLogFileName() const;
    // The result document.
    std::string getResultFileName() const;
    // The status document.
    std::string getStatusFileName() const;
    // The progress that an agent reports while it deploys.
    std::string getDeploymentStatusFileName() const;
    std::string getScoutResultFileName() const;
    // The state that an agent reports while it dumps.
    std::string getDumpingStatusFileName() const;
    // A content file. name: relative to the session directory.
    std::string getCidFile(const std::string& name) const;

    // Both give the session path itself: content lies directly in the session directory.
    std::string getDir() const;
    std::string getCidFilesDir() const;

  private:
    std::string path_;
};

// The session of the process: valid between the birth and the death of its controller, null
// otherwise.
extern SessionFiles* theSession;

// Owns the process's session object. The directory outlives it.
class SessionLifetimeController {
  public:
    // Makes the SessionFiles, which can raise, and sets theSession.
    explicit SessionLifetimeController(const std::string& path);
    ~SessionLifetimeController();
    SessionLifetimeController(const SessionLifetimeController&) = delete;
    SessionLifetimeController& operator=(const SessionLifetimeController&) = delete;
};

}  // namespace zelvo
