// The owner of a pointer that libxml2 or libxslt handed out.
#pragma once

#include <boost/make_shared.hpp>
#include <boost/shared_ptr.hpp>

#include "xml/libxml_types.h"

namespace zelvo {

// Shares the ownership of a library's pointer among its copies; the last one calls Release on it,
// unless it is null. T is the pointer type itself, such as xmlDoc*.
template <class T, void (*Release)(T)>
class ttPtrWrapper {
  public:
    // Holds null.
    ttPtrWrapper() = default;
    // Takes the pointer over.
    explicit ttPtrWrapper(T pointer) : wrapper_(boost::make_shared<TWrapper>(pointer)) {}

    // The pointer, which stays owned here; null if there is none.
    T get() const { return wrapper_ ? wrapper_->pointer : T(); }

  private:
    struct TWrapper {
        explicit TWrapper(T owned) : pointer(owned) {}
        TWrapper(const TWrapper&) = delete;
        TWrapper& operator=(const TWrapper&) = delete;
        ~TWrapper() {
            if (pointer != T()) {
                Release(pointer);
            }
        }

        T pointer;
    };

    boost::shared_ptr<TWrapper> wrapper_;
};

using XmlDocPtr = ttPtrWrapper<xmlDoc*, xmlFreeDoc>;
using XPathContextPtr = ttPtrWrapper<xmlXPathContext*, releaseXPathContext>;
using XPathObjectPtr = ttPtrWrapper<xmlXPathObject*, xmlXPathFreeObject>;
using XmlCharPtr = ttPtrWrapper<xmlChar*, rmkFreeXmlChar>;
using XsltStylesheetPtr = ttPtrWrapper<xsltStylesheet*, xsltFreeStylesheet>;
using XmlDtdPtr = ttPtrWrapper<xmlDtd*, xmlFreeDtd>;
using XmlValidCtxtPtr = ttPtrWrapper<xmlValidCtxt*, xmlFreeValidCtxt>;

}  // namespace zelvo
