#include "result_text.h"

#include <array>
#include <string_view>

namespace {

constexpr std::string_view kOuterNamespace = "zelvo::";
constexpr std::string_view kCallOperator = "operator()";

// "void zelvo::Deployer::act(const XmlNode&) const" gives "Deployer::act".
std::string bareFunction(std::string_view context) {
    const auto callOperator = context.find(kCallOperator);
    const auto arguments = callOperator == std::string_view::npos
                               ? context.find('(')
                               : context.find('(', callOperator + kCallOperator.size());
    context = context.substr(0, arguments);
    const auto name = context.rfind(' ');
    if (name != std::string_view::npos) context.remove_prefix(name + 1);
    // A result by pointer or reference leaves its sign at the name.
    while (context.starts_with('*') || context.starts_with("&amp;")) {
        context.remove_prefix(context.starts_with('*') ? 1 : 5);
    }
    if (context.starts_with(kOuterNamespace)) context.remove_prefix(kOuterNamespace.size());
    return std::string(context);
}

template <typename Change>
std::string changeTexts(const std::string& document, const std::string& element, Change change) {
    const std::string open = "<" + element + ">";
    const std::string close = "</" + element + ">";
    std::string out;
    std::size_t at = 0;
    for (;;) {
        const auto start = document.find(open, at);
        const auto end = start == std::string::npos ? start : document.find(close, start);
        if (end == std::string::npos) return out + document.substr(at);
        const auto text = start + open.size();
        out += document.substr(at, text - at) + change(document.substr(text, end - text));
        at = end;
    }
}

}  // namespace

std::string normalizeResult(const std::string& document) {
    const auto still = changeTexts(document, "line", [](const std::string&) { return "N"; });
    return changeTexts(still, "context",
                       [](const std::string& text) { return bareFunction(text); });
}

std::string findReport(const std::string& err) {
    constexpr std::array<std::string_view, 10> kSigns = {
        "ERROR: AddressSanitizer",      "ERROR: LeakSanitizer", "WARNING: ThreadSanitizer",
        "WARNING: MemorySanitizer",     ": runtime error: ",    "Invalid read of size",
        "Invalid write of size",        "uninitialised value",  "are definitely lost",
        "AddressSanitizer:DEADLYSIGNAL"};
    const auto lineAt = [&](std::size_t at) {
        const auto start = err.rfind('\n', at);
        const auto from = start == std::string::npos ? 0 : start + 1;
        return err.substr(from, err.find('\n', at) - from);
    };
    for (const std::string_view sign : kSigns) {
        if (const auto at = err.find(sign); at != std::string::npos) return lineAt(at);
    }
    return {};
}
