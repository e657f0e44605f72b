// Keeps a domain suspended while it is restored.
#pragma once

#include <string>

namespace zelvo {

// Resumes, whatever way it dies, the domain that it suspended.
class DomainSuspender {
  public:
    // domainName: in UTF-8.
    explicit DomainSuspender(std::string domainName);
    ~DomainSuspender();
    DomainSuspender(const DomainSuspender&) = delete;
    DomainSuspender& operator=(const DomainSuspender&) = delete;

    // Suspends the domain. A failure goes to the debug log; the domain then counts as not
    // suspended.
    void suspendDomain();

    // Resumes the domain if it was suspended, once at most. A failure is logged as
    // ResumeDomainFailed.
    void doUnsuspendDomain();

  private:
    // Runs the panel's suspend handler with "suspend" or "unsuspend". It is no utility of the
    // command line gate, so it runs directly in every run.
    void runHandler(const std::string& word) const;

    std::string domainName_;
    bool suspended_ = false;
};

}  // namespace zelvo
