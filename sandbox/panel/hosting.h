// Hosting of a domain: its account and the directory of its virtual host.
#pragma once

namespace sandbox {

class Model;
struct Object;
struct Request;

// Does as the options of "domain --create" and "domain --update" say. Physical hosting needs a
// login once; whatever else -hosting and -hst_type say takes it away with all that lives in it.
// Throws Refusal.
void applyHosting(Model& model, const Object& domain, const Request& request);

// The hosting of a new domain under a template with hosting, for the login of the request; without
// one it gets none.
void makeTemplateHosting(Model& model, const Object& domain, const Object& used,
                         const Request& request);

}  // namespace sandbox
