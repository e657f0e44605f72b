// bench-translation DEPLOYER CONTROL DIRECTORY: the translation of a big foreign dump beside
// xsltproc. CONTROL: the directory with the DTD and the stylesheet of the agent Wickerdeck, which
// the utility finds installed.
#include <algorithm>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

#include "measure.h"

namespace {

using bench::Cost;
using bench::costOfProgram;

constexpr int kPairs = 3;
constexpr int kCustomers = 20;
constexpr std::uintmax_t kDumpSize = 100'000'000;

std::string person(const std::string& name) {
    return "<person><name>" + name + "</name><firm>Firm of " + name + "</firm><mail>" + name +
           "@example.com</mail>\n        <street>1, Long Street</street><town>Bremen</town>"
           "<postcode>28195</postcode><country>DE</country></person>\n";
}

std::string site(const std::string& number) {
    return "    <site name=\"site" + number + ".example\" opened=\"2009-11-05T10:00:00Z\" " +
           "plan=\"P" + std::to_string(number.size()) + "\">\n      <keeper>" +
           person("keeper" + number) + "        <secret>secret-" + number +
           "</secret>\n        <right to=\"logs\" granted=\"no\"/>\n      </keeper>\n"
           "      <quota of=\"disk\" amount=\"1.5\" unit=\"GB\"/>\n"
           "      <quota of=\"databases\" amount=\"5\"/>\n"
           "      <usage day=\"2010-04-01\" of=\"http\" in=\"4194304\" out=\"20971520\"/>\n"
           "      <mailbox local=\"info\"><secret>letters-" +
           number +
           "</secret></mailbox>\n      <record host=\"mail\" type=\"MX\" value=\"10 "
           "mx.example\"/>\n"
           "    </site>\n";
}

std::string plans() {
    std::string text;
    for (const char* id : {"P1", "P2", "P3", "P4", "P5", "P6"}) {
        text += std::string("  <plan id=\"") + id +
                "\"><quota of=\"disk\" amount=\"500\"/><quota of=\"traffic\" amount=\"10\" "
                "unit=\"GB\"/><quota of=\"mailboxes\" amount=\"25\"/><right to=\"dns\"/></plan>\n";
    }
    return text;
}

void writeDump(const std::string& path) {
    const std::uintmax_t sites = kDumpSize / site("100000").size();
    std::ofstream file(path);
    file << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<wickerdeck release=\"3\">\n" << plans();
    for (std::uintmax_t customer = 0; customer < kCustomers; ++customer) {
        const std::string login = "customer" + std::to_string(customer);
        file << "  <customer login=\"" << login << "\" plan=\"P1\">\n    " << person(login);
        for (std::uintmax_t number = customer; number < sites; number += kCustomers) {
            file << site(std::to_string(number));
        }
        file << "  </customer>\n";
    }
    file << "</wickerdeck>\n";
    file.close();
    if (!file) {
        throw std::runtime_error("cannot write " + path);
    }
}

// xsltproc itself validates nothing: what the validation adds to a reading is told by xmllint.
Cost xsltprocWithValidation(const std::string& control, const std::string& dump,
                            const std::string& out) {
    Cost cost = costOfProgram({"xsltproc", "-o", out, control + "/wickerdeck.xsl", dump});
    const Cost reading = costOfProgram({"xmllint", "--noout", dump});
    const Cost validation =
        costOfProgram({"xmllint", "--noout", "--dtdvalid", control + "/wickerdeck.dtd", dump});
    cost.wall += validation.wall - reading.wall;
    cost.cpu += validation.cpu - reading.cpu;
    cost.peak = std::max(cost.peak, validation.peak);
    return cost;
}

// A translation that failed ends with status 0 too, and would be a quick one.
void expectSameOutcome(const std::string& left, const std::string& right) {
    std::ifstream leftFile(left);
    std::ifstream rightFile(right);
    using Bytes = std::istreambuf_iterator<char>;
    if (!leftFile || !std::equal(Bytes(leftFile), Bytes(), Bytes(rightFile), Bytes())) {
        throw std::runtime_error("the outcome is not that of the yardstick");
    }
}

bool run(const std::string& deployer, const std::string& control, const std::string& directory) {
    const std::string dump = directory + "/dump.xml";
    writeDump(dump);
    bench::Comparison toXsltproc("translate");
    for (int pair = 0; pair < kPairs; ++pair) {
        const Cost yardstick = xsltprocWithValidation(control, dump, directory + "/bare.xml");
        toXsltproc.add(costOfProgram({deployer, "--translate-dump", "--session-path", directory,
                                      "--agent-name", "Wickerdeck"}),
                       yardstick);
        expectSameOutcome(directory + "/restore.xml", directory + "/bare.xml");
    }
    bench::tellHeading("Translating a dump (" +
                           std::to_string(std::filesystem::file_size(dump) / 1'000'000) + " MB)",
                       "deployer --translate-dump",
                       "xsltproc, and what xmllint --dtdvalid takes longer than xmllint");
    const bool isTimeOk = toXsltproc.tellTime(1.15);
    return toXsltproc.tellPeak(1.15) && isTimeOk;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 4) {
        std::fputs("usage: bench-translation DEPLOYER CONTROL DIRECTORY\n", stderr);
        return 2;
    }
    try {
        return run(argv[1], argv[2], argv[3]) ? 0 : 1;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "bench-translation: %s\n", failure.what());
        return 2;
    }
}
