// An FTP server (RFC 959) that holds one file and answers as a test says: the good answer to each
// command, but for those that the script has.
#pragma once

#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "exec/descriptor.h"

struct FtpScript {
    // By whole command, by its first word or by code: what is said instead. "" closes the
    // connection, "-" is silence. "greeting", "transfer" (the end of one) and "data" ("-": that
    // connection is never made) are no commands, nor is "stall" ("-": it is never closed). "second
    // " and a whole command: what the second one is answered.
    std::map<std::string, std::string> replies = {};
    // What LIST, NLST and RETR send.
    std::string content = {};
    // What PASV names.
    std::string address = "127,0,0,1";
};

// Serves one connection after the other, in a thread of its own, until its end.
class ScriptedFtpServer {
  public:
    explicit ScriptedFtpServer(FtpScript script);
    ~ScriptedFtpServer();
    ScriptedFtpServer(const ScriptedFtpServer&) = delete;
    ScriptedFtpServer& operator=(const ScriptedFtpServer&) = delete;

    std::string url(const std::string& path) const;
    // What was asked so far, one command a line.
    std::string commands();

  private:
    void serve();
    void converse(int control);
    bool answer(int control, const std::string& line);
    bool reply(int control, const std::string& key, const std::string& good);
    bool transfer(int control, const std::string& command);

    FtpScript script_;
    int port_ = 0;
    zelvo::Descriptor listener_;
    zelvo::Descriptor passive_;
    std::string active_;
    // Of each command.
    std::map<std::string, int> count_;
    std::mutex mutex_;
    std::string commands_;
    std::thread thread_;
};
