// The root of all failures of the system and the means to raise one: a failure carries a stable
// code, a message filled from arguments, the place where it was raised and what caused it.
#pragma once

#include <boost/format.hpp>
#include <memory>
#include <stdexcept>
#include <string>

// Whatever can be copied without its exact type being known.
class Cloneable {
  public:
    virtual ~Cloneable() = default;

    // Returns a copy of the object, which the caller owns.
    virtual Cloneable* clone() const = 0;
};

namespace zelvo {

// Reads a failure part by part, the outermost failure first. The formatters of failures derive
// from it, so that a failure need not know the forms in which it is told.
class ExInfoVisitor {
  public:
    virtual ~ExInfoVisitor() = default;

    virtual void setCode(const std::string& code) = 0;
    virtual void setMessage(const std::string& message) = 0;
    // The signature of the function that raised the failure.
    virtual void setContext(const std::string& context) = 0;
    virtual void setFile(const std::string& file) = 0;
    virtual void setLine(int line) = 0;
    // What follows belongs to the failure that caused the one told so far.
    virtual void advanceToInnerException() = 0;
};

// Whatever an ExInfoVisitor can read.
class ExVisitable {
  public:
    virtual ~ExVisitable() = default;

    virtual void accept(ExInfoVisitor& visitor) const = 0;
};

// The root of the failures: a code and a message.
class ExTraceable : public Cloneable, public ExVisitable, public std::runtime_error {
  public:
    // code: short stable identifier, such as "UnableToCreateSession". message: a template in the
    // form of boost::format, whose arguments are fed later.
    ExTraceable(const std::string& code, const std::string& message);
    ExTraceable(const ExTraceable& other);
    ExTraceable& operator=(const ExTraceable&) = delete;
    ~ExTraceable() override = default;

    ExTraceable* clone() const override;

    // The message with its arguments; valid as long as the exception and until the next call.
    const char* what() const noexcept override;

    // Calls setCode and setMessage.
    void accept(ExInfoVisitor& visitor) const override;

  protected:
    template <class T>
    void feed(const T& argument) {
        message_ % argument;
    }

  private:
    boost::format message_;
    mutable std::string text_;
};

// A failure that may hold the failure that caused it.
class ExTaggedIncludable : public ExTraceable {
  public:
    ExTaggedIncludable(const std::string& code, const std::string& message);
    // Keeps a clone of inner.
    ExTaggedIncludable(const std::string& code, const std::string& message,
                       const ExTraceable& inner);
    ExTaggedIncludable(const ExTaggedIncludable& other);

    // Keeps a clone of inner, in place of what was kept before.
    void causedBy(const ExTraceable& inner);

    ExTaggedIncludable* clone() const override;

    // As ExTraceable, then advanceToInnerException and the inner failure if there is one.
    void accept(ExInfoVisitor& visitor) const override;

  private:
    std::unique_ptr<ExTraceable> inner_;
};

// What tells one error from another: the address of a function that is never called. Each error
// is thereby a type of its own, which classes and namespaces can own and catch clauses can name.
using ErrorTag = void (*)(bool);

// The code and the message template of an error; specialised by ERROR_DEFINITION.
template <ErrorTag tag>
struct ErrorDefinition;

// The failure of one error: raised by EXC or EXC_INNER, which note the place.
template <ErrorTag tag>
class Exc : public ExTaggedIncludable {
  public:
    // context: signature of the raising function. file: source file, beginning with "./".
    Exc(const std::string& context, const std::string& file, int line)
        : ExTaggedIncludable(ErrorDefinition<tag>::code, ErrorDefinition<tag>::text),
          context_(context),
          file_(file),
          line_(line) {}

    // The same with a clone of the failure that caused this one.
    Exc(const std::string& context, const std::string& file, int line, const ExTraceable& inner)
        : ExTaggedIncludable(ErrorDefinition<tag>::code, ErrorDefinition<tag>::text, inner),
          context_(context),
          file_(file),
          line_(line) {}

    Exc* clone() const override { return new Exc(*this); }

    // Calls setContext, setFile and setLine, then as the base.
    void accept(ExInfoVisitor& visitor) const override {
        visitor.setContext(context_);
        visitor.setFile(file_);
        visitor.setLine(line_);
        ExTaggedIncludable::accept(visitor);
    }

    // Feeds the next argument of the message template. A template that gets fewer arguments than
    // it names makes boost::format raise a failure of its own when the message is asked for.
    template <class T>
    Exc& operator%(const T& argument) {
        feed(argument);
        return *this;
    }

  private:
    std::string context_;
    std::string file_;
    int line_;
};

}  // namespace zelvo

// Makes the failure of an error with this place: throw EXC(tError_SaveFile) % name;
#define EXC(tag) ::zelvo::Exc<&tag>(__PRETTY_FUNCTION__, __FILE__, __LINE__)

// The same around the failure that caused it.
#define EXC_INNER(tag, inner) ::zelvo::Exc<&tag>(__PRETTY_FUNCTION__, __FILE__, __LINE__, inner)

// Binds an error that a class declared as a static member to its code and message template. Stands
// at global scope, behind the class, with the qualified name of the tag.
#define ERROR_DEFINITION(tag, errorCode, errorText)    \
    template <>                                        \
    struct zelvo::ErrorDefinition<&(tag)> {            \
        static constexpr const char* code = errorCode; \
        static constexpr const char* text = errorText; \
    }

// Declares an error of the namespace zelvo whose code is its name. Stands at global scope.
#define ERROR_TAG(name, errorText) \
    namespace zelvo {              \
    inline void name(bool) {}      \
    }                              \
    ERROR_DEFINITION(zelvo::name, #name, errorText)
