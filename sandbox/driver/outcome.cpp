#include "outcome.h"

#include "sandbox.h"

#include <libxml/parser.h>
#include <libxml/tree.h>
#include <memory>
#include <regex>

namespace {

// How the text of a code usually begins.
const std::pair<std::string, std::string> kSentences[] = {
    {"FailedClientDeployment", "Failed deployment of client "},
    {"FailedDomainDeployment", "Failed deployment of domain "},
    {"NotSupportedOperation", "The operation is not supported: "},
};

const std::string kExecution = "Execution of /opt/qrd/admin/vlib/api-cli/";
const std::string kCode = " failed with return code ";
const std::string kStderr = "Stderr is\n";

// "client --create bob => 5", or nothing for a text of another form. The arrow stands in no text
// that is written so: what is shown could otherwise come from two texts.
std::string failedCall(const std::string& text) {
    const auto nameEnd = text.find(".php");
    const auto commandEnd = text.find(kCode);
    const auto codeEnd = text.find(".\n", commandEnd);
    if (!text.starts_with(kExecution) || nameEnd == std::string::npos || commandEnd < nameEnd ||
        text.find(' ', kExecution.size()) < nameEnd || codeEnd == std::string::npos ||
        text.find("=>") != std::string::npos) {
        return "";
    }
    const auto codeAt = commandEnd + kCode.size();
    const std::string code = text.substr(codeAt, codeEnd - codeAt);
    if (code.find_first_not_of("-0123456789") != std::string::npos) return "";
    const std::string streams = text.substr(codeEnd + 2);
    const bool isStderr = streams.starts_with(kStderr) && streams.ends_with('\n');
    const std::string said =
        streams.empty() ? ""
        : isStderr      ? ": " + streams.substr(kStderr.size(), streams.size() - kStderr.size() - 1)
                        : " | " + streams;
    return text.substr(kExecution.size(), nameEnd - kExecution.size()) +
           text.substr(nameEnd + 4, commandEnd - nameEnd - 4) + " => " + code + said;
}

std::string sentence(const std::string& code, const std::string& text) {
    const std::string call = code == "ExecCmd::Failed" ? failedCall(text) : "";
    if (!call.empty()) return ": " + call;
    for (const auto& [ofCode, beginning] : kSentences) {
        if (code == ofCode && text.starts_with(beginning)) {
            return ": " + text.substr(beginning.size());
        }
    }
    return " " + text;
}

std::string ofXml(xmlChar* text) {
    const std::unique_ptr<xmlChar, void (*)(void*)> owner(text, xmlFree);
    return text == nullptr ? "" : reinterpret_cast<const char*>(text);
}

std::string nameOf(const xmlNode* node) { return reinterpret_cast<const char*>(node->name); }

std::string attribute(xmlNode* node, const char* name) {
    return ofXml(xmlGetProp(node, reinterpret_cast<const xmlChar*>(name)));
}

class Reader {
  public:
    explicit Reader(Outcome& outcome) : outcome_(outcome) {}

    void readInside(xmlNode* node, const std::string& indentation, const std::string& place) {
        for (xmlNode* child = node->children; child != nullptr; child = child->next) {
            const std::string name = nameOf(child);
            if (name == "object") {
                readObject(child, indentation, place);
            } else if (name == "message") {
                outcome_.codes.push_back(place + ": " + readMessage(child, indentation));
            } else {
                write(indentation, "neither an object nor a message: " + name);
            }
        }
    }

  private:
    void write(const std::string& indentation, const std::string& text) {
        static const std::regex place(R"(\[\./[a-z0-9_/]+\.cpp:[0-9]+\])");
        outcome_.outline += indentation +
                            onOneLine(text.find("[./") == std::string::npos
                                          ? text
                                          : std::regex_replace(text, place, "[PLACE]")) +
                            "\n";
    }

    void readObject(xmlNode* node, const std::string& indentation, const std::string& place) {
        const std::string words = attribute(node, "type") + " " + attribute(node, "name");
        write(indentation, words);
        readInside(node, indentation + "  ", (place.empty() ? "" : place + "/") + words);
    }

    // Returns the codes from the outermost to the innermost.
    std::string readMessage(xmlNode* node, const std::string& indentation) {
        static const std::regex known(R"(.+\|\./[a-z0-9_/]+\.cpp\|[1-9][0-9]*\|)");
        const std::string code = attribute(node, "code");
        std::string place;
        std::string text;
        xmlNode* cause = nullptr;
        for (xmlNode* child = node->children; child != nullptr; child = child->next) {
            const std::string name = nameOf(child);
            if (name == "text")
                text = ofXml(xmlNodeGetContent(child));
            else if (name == "message")
                cause = child;
            else
                place += ofXml(xmlNodeGetContent(child)) + "|";
        }
        const bool isComplete =
            std::regex_match(place, known) && attribute(node, "severity") == "error";
        write(indentation, (isComplete ? "" : "without a place: ") + code + sentence(code, text));
        return code + (cause == nullptr ? "" : " > " + readMessage(cause, indentation + "  "));
    }

    Outcome& outcome_;
};

}  // namespace

Outcome outcomeIn(const std::string& document) {
    const std::unique_ptr<xmlDoc, void (*)(xmlDoc*)> parsed(
        xmlReadMemory(document.data(), static_cast<int>(document.size()), nullptr, nullptr,
                      XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING | XML_PARSE_HUGE),
        xmlFreeDoc);
    xmlNode* root = parsed ? xmlDocGetRootElement(parsed.get()) : nullptr;
    if (root == nullptr) return {"malformed", "", {}};
    Outcome outcome{attribute(root, "status"), "", {}};
    if (nameOf(root) == "execution-result") Reader(outcome).readInside(root, "", "");
    return outcome;
}

bool isWhole(const std::string& document) {
    return document.ends_with(">\n") && outcomeIn(document).status != "malformed";
}

std::string outcomeOf(const Sandbox& box) {
    const Outcome outcome = outcomeIn(box.resultText());
    return outcome.status + "\n" + outcome.outline;
}

Lines codesOf(const Sandbox& box) {
    const Outcome outcome = outcomeIn(box.resultText());
    Lines lines{outcome.status};
    lines.insert(lines.end(), outcome.codes.begin(), outcome.codes.end());
    return lines;
}
