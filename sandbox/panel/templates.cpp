// The utilities of templates. Each owner has names of its own for them.
#include <algorithm>

#include "panel/command.h"
#include "panel/objects.h"
#include "xml_text.h"

namespace sandbox {

namespace {

std::string templateItem(const std::string& name, const std::string& value) {
    return "  <template-item name=\"" + xmlText(name) + "\">" + xmlText(value) +
           "</template-item>\n";
}

Answer showTemplate(Model& model, const Request& request) {
    const Object object = requestedObject(model, request);
    std::string root = object.kind;
    std::replace(root.begin(), root.end(), '_', '-');
    std::string out = "<" + root + " name=\"" + xmlText(object.name) + "\">\n";
    for (const Option& option : model.options(object)) {
        // The item tells the kind of hosting, the option only whether there is one.
        out += option.name == "hosting"
                   ? templateItem("vh_type", option.value == "true" ? "physical" : "none")
                   : templateItem(option.name, option.value);
    }
    return {0, out + "</" + root + ">\n", ""};
}

Answer showHosting() {
    return {0, "<domain-template>\n" + templateItem("vh_type", "physical") + "</domain-template>\n",
            ""};
}

constexpr char kDomain[] = "domain_template";
constexpr char kClient[] = "client_template";
constexpr char kReseller[] = "reseller_template";

constexpr Command kRows[] = {
    {kDomain, "--create", Shape::kName, kDomain, kEachOwner, createObject},
    {kDomain, "-x", Shape::kName, kDomain, kEachOwner, showTemplate, showHosting},
    {kClient, "--create", Shape::kName, kClient, kEachOwner, createObject},
    {kClient, "-x", Shape::kName, kClient, kEachOwner, showTemplate},
    {kReseller, "--create", Shape::kName, kReseller, kEachOwner, createObject},
    {kReseller, "-x", Shape::kName, kReseller, kEachOwner, showTemplate},
};

}  // namespace

Commands templateCommands() { return rowsOf(kRows); }

}  // namespace sandbox
