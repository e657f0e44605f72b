// What the domain template of the command line makes of a domain.
#pragma once

namespace zelvo {

struct TemplateRules {
    // Hosting parameters of the dump are to be applied, and not those of the template.
    bool useDumpParameters = true;
    // The template has physical hosting; false without a template.
    bool templateHasHosting = false;
};

}  // namespace zelvo
