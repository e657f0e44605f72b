// A panel's /etc for a test program, in a mount namespace of the program's own: the users and
// groups that own what is written, and a product root. Beside it, what a test reads of a failure.
#pragma once

#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>

#include <filesystem>

#include "commons/exception.h"
#include "temp_dir.h"

namespace test {

// Made once for a test program that includes this file.
struct PanelBox : testing::Environment {
    void SetUp() override {
        std::filesystem::create_directories(dir.path("etc/qrd"));
        std::filesystem::create_directories(dir.path("product/RMK"));
        dir.write("etc/passwd",
                  "root:x:0:0:::\nqrdadm:x:4711:4712:::\npopuser:x:4713:4714:::\n"
                  "list:x:4715:4716:::\nwebmaster:x:4717:4718:::\npostgres:x:4721:4722:::\n"
                  "ftp:x:4723:4724::/:\nnobody:x:65534:65534:::\n");
        dir.write("etc/group",
                  "qrdadm:x:4712:\npopuser:x:4714:\nlist:x:4716:\nqrdcln:x:4718:\n"
                  "qrdserv:x:4719:\nqrdftp:x:4720:\npostgres:x:4722:\n");
        dir.write("etc/qrd/qrd.conf", "PRODUCT_ROOT_D " + dir.path("product") + "\n");
        if (unshare(CLONE_NEWNS) != 0 ||
            mount("none", "/", "none", MS_REC | MS_PRIVATE, nullptr) != 0 ||
            mount(dir.path("etc").c_str(), "/etc", "none", MS_BIND, nullptr) != 0) {
            throw std::runtime_error("these tests need root");
        }
    }
    void TearDown() override { umount2("/etc", MNT_DETACH); }

    TempDir dir;
};

inline PanelBox& panelBox =
    static_cast<PanelBox&>(*testing::AddGlobalTestEnvironment(new PanelBox));

// The code, if it has one, and the message of the failure that the call raises; empty if none.
template <class Call>
std::string faultOf(Call&& call) {
    try {
        call();
    } catch (const zelvo::ExTraceable& failure) {
        return std::string(failure.std::runtime_error::what()) + ": " + failure.what();
    } catch (const std::exception& failure) {
        return failure.what();
    }
    return "";
}

}  // namespace test
