#include "commons/exception.h"

namespace zelvo {

ExTraceable::ExTraceable(const std::string& code, const std::string& message)
    : std::runtime_error(code), message_(message) {}

ExTraceable::ExTraceable(const ExTraceable& other)
    // NOLINTNEXTLINE(bugprone-throw-keyword-missing): a base, and not an object to throw
    : Cloneable(other), ExVisitable(other), std::runtime_error(other), message_(other.message_) {}

ExTraceable* ExTraceable::clone() const { return new ExTraceable(*this); }

const char* ExTraceable::what() const noexcept {
    try {
        text_ = message_.str();
        return text_.c_str();
    } catch (const std::exception&) {
        return std::runtime_error::what();
    }
}

void ExTraceable::accept(ExInfoVisitor& visitor) const {
    visitor.setCode(std::runtime_error::what());
    visitor.setMessage(message_.str());
}

ExTaggedIncludable::ExTaggedIncludable(const std::string& code, const std::string& message)
    : ExTraceable(code, message) {}

ExTaggedIncludable::ExTaggedIncludable(const std::string& code, const std::string& message,
                                       const ExTraceable& inner)
    : ExTraceable(code, message), inner_(inner.clone()) {}

ExTaggedIncludable::ExTaggedIncludable(const ExTaggedIncludable& other)
    : ExTraceable(other), inner_(other.inner_ ? other.inner_->clone() : nullptr) {}

void ExTaggedIncludable::causedBy(const ExTraceable& inner) { inner_.reset(inner.clone()); }

ExTaggedIncludable* ExTaggedIncludable::clone() const { return new ExTaggedIncludable(*this); }

void ExTaggedIncludable::accept(ExInfoVisitor& visitor) const {
    ExTraceable::accept(visitor);
    if (inner_) {
        visitor.advanceToInnerException();
        inner_->accept(visitor);
    }
}

}  // namespace zelvo
