// Custom buttons: what somebody added to the panel's pages.
#pragma once

#include <string>
#include <vector>

#include "restore/toolbox/deploy_doc_ability.h"

namespace zelvo {

// Restores one `custom-button` element.
class CustomButtonDeployer : public XmlDeployDocAbility {
  public:
    // Builds the list of what the panel appends to a button's address.
    class UrlOptionAppender {
      public:
        // components: the list, separated by commas; must outlive the appender.
        explicit UrlOptionAppender(std::string& components) : components_(components) {}

        // Appends the component that the `url-option` names. One of an unknown name adds an empty
        // component, which in the first place is nothing at all.
        void operator()(const XmlNode& option) const;

      private:
        std::string& components_;
    };

    // owner: a domain, a full mail name or a login. createdIds: where the panel's ids of the
    // buttons are appended, unless it is null; must outlive the deployer.
    explicit CustomButtonDeployer(std::string owner,
                                  std::vector<std::string>* createdIds = nullptr);

    using XmlDeployDocAbility::act;
    // Creates the button. Raises what extractIcons raises, ExecCmd::Failed, and what an answer
    // raises that is no document with the new id.
    void act(XmlNode node) const override;

  private:
    std::string owner_;
    std::vector<std::string>* createdIds_;
};

}  // namespace zelvo
