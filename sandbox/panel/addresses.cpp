// The utilities of the server's addresses and of the pools that accounts have of them.
#include "panel/command.h"
#include "panel/objects.h"
#include "words.h"
#include "xml_text.h"

namespace sandbox {

namespace {

Answer addAddress(Model& model, const Request& request) {
    if (model.find("ip", request.name)) {
        throw Refusal("address " + quoteWord(request.name) + " exists already");
    }
    return createObject(model, request);
}

std::string ipElement(const std::string& address, const std::string& type,
                      const std::string& defaultDomain) {
    std::string out = "  <ip name=\"" + xmlText(address) + "\"><type>" + xmlText(type) + "</type>";
    if (!defaultDomain.empty()) {
        out += "<def_domain>" + xmlText(defaultDomain) + "</def_domain>";
    }
    return out + "</ip>\n";
}

Answer ipInfo(const std::string& elements) {
    return {0, "<ipinfo>\n" + elements + "</ipinfo>\n", ""};
}

Answer listAddresses(Model& model, const Request&) {
    std::string elements;
    for (const Object& ip : model.all("ip")) {
        const auto value = [&](const char* name) { return model.option(ip, "ipmanage", name); };
        elements += ipElement(ip.name, value("type").value_or("shared"),
                              value("default-domain").value_or(""));
    }
    return ipInfo(elements);
}

Answer listOneAddress() { return ipInfo(ipElement("192.0.2.10", "shared", "")); }

Answer addToPool(Model& model, const Request& request) {
    const Object address = requestedObject(model, request);
    const std::string* owner = request.option("owner");
    const std::string* type = request.option("type");
    if (owner == nullptr || type == nullptr) {
        throw Refusal("--add needs -type and -owner");
    }
    model.setOption(existingAccount(model, *owner), {"ip_pool", address.name, *type});
    return {};
}

constexpr Command kRows[] = {
    {"ipmanage", "-c", Shape::kName, "ip", kServer, addAddress},
    {"ipmanage", "-u", Shape::kName, "ip", kServer, updateObject},
    {"ipmanage", "-xi", Shape::kOptions, "", kServer, listAddresses, listOneAddress},
    {"ipmanage", "--reset_ssl_certificate", Shape::kOptions, "", kServer, succeed},
    {"ip_pool", "--add", Shape::kName, "ip", kServer, addToPool},
};

}  // namespace

Commands addressCommands() { return rowsOf(kRows); }

}  // namespace sandbox
