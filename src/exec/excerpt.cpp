#include "exec/excerpt.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace zelvo {

namespace {

constexpr std::size_t kPart = 64 << 10;
constexpr const char* kGap = "\n[...]\n";

}  // namespace

Excerpt::Excerpt(std::string& text, std::string mark)
    : text_(text), mark_(std::move(mark)), middle_(text.size()), room_(kPart) {}

void Excerpt::shorten() {
    // Not for every line that is too much: each time moves the end.
    if (text_.size() - middle_ <= 3 * kPart) {
        return;
    }
    if (!isCut_) {
        middle_ = linesEnd(kPart);
        const std::string gap(kGap);
        text_.insert(middle_, gap);
        middle_ += gap.size();
        isCut_ = true;
    }
    const std::size_t end = linesEnd(text_.size() - middle_ - kPart);
    const std::string marked = markedLines(end);
    text_.replace(middle_, end - middle_, marked);
    middle_ += marked.size();
}

// The end of the last whole line within so many bytes of the middle; theirs, if there is none.
std::size_t Excerpt::linesEnd(std::size_t most) const {
    const std::string_view part = std::string_view(text_).substr(middle_, most);
    const std::size_t feed = part.rfind('\n');
    return middle_ + (feed == std::string_view::npos ? part.size() : feed + 1);
}

// The lines between the middle and an end that the mark wants kept.
std::string Excerpt::markedLines(std::size_t end) {
    std::string lines;
    std::string_view part = std::string_view(text_).substr(middle_, end - middle_);
    while (!mark_.empty() && !part.empty() && room_ > 0) {
        const std::string_view line = part.substr(0, part.find('\n'));
        if (line.starts_with(mark_)) {
            lines.append(line.substr(0, room_)).push_back('\n');
            room_ -= std::min(room_, line.size() + 1);
        }
        part.remove_prefix(std::min(part.size(), line.size() + 1));
    }
    return lines;
}

}  // namespace zelvo
