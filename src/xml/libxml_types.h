// The names of libxml2's and libxslt's types and of the functions that release them, so that the
// headers of this floor need not drag the libraries' own headers along.
#pragma once

typedef struct _xmlDoc xmlDoc;
typedef struct _xmlNode xmlNode;
typedef struct _xmlNodeSet xmlNodeSet;
typedef struct _xmlXPathContext xmlXPathContext;
typedef struct _xmlXPathObject xmlXPathObject;
typedef struct _xmlDtd xmlDtd;
typedef struct _xmlValidCtxt xmlValidCtxt;
typedef struct _xmlOutputBuffer xmlOutputBuffer;
typedef struct _xsltStylesheet xsltStylesheet;
typedef unsigned char xmlChar;

extern "C" {
void xmlFreeDoc(xmlDoc* doc);
void xmlXPathFreeContext(xmlXPathContext* context);
void xmlXPathFreeObject(xmlXPathObject* object);
void xmlFreeDtd(xmlDtd* dtd);
void xmlFreeValidCtxt(xmlValidCtxt* context);
void xsltFreeStylesheet(xsltStylesheet* stylesheet);
}

namespace zelvo {

// Releases a string that libxml2 allocated. xmlFree is a variable of the library and no function,
// so it cannot be the template argument of an owner.
void rmkFreeXmlChar(xmlChar* text);

// Releases a context of XPath expressions: keeps one for the next expression and frees others.
void releaseXPathContext(xmlXPathContext* context);

}  // namespace zelvo
