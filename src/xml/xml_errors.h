// The errors of the XML floor with their message templates.
#pragma once

#include "commons/exception.h"

// Documents.
ERROR_TAG(tError_XmlInternal, "%1%");
ERROR_TAG(tError_WrongInputFile,
          "The XML file does not exist or is not a regular file. Check the file '%1%'");
ERROR_TAG(tError_ParseFile,
          "The XML file %1% was not parsed successfully with the following errors:\n%2%");
ERROR_TAG(tError_SaveFile, "Can not save the XML document to file '%1%'");
ERROR_TAG(tError_EmptyDoc, "The document is empty. Can not find root element <%1%>");
// Fed with the expected name first and the name that was found second.
ERROR_TAG(tError_WrongDoc,
          "The document has the wrong type, root node is <%2%>, but <%1%> was expected");
ERROR_TAG(tError_WrongContent, "%1%");
ERROR_TAG(NoSuchAttribute, "Node %1% does not have attribute %2%");
ERROR_TAG(CantTakeFileOwnership, "Cannot take ownership of %1%: %2%");
ERROR_TAG(CantRenameFile, "Cannot rename %1% to %2%: %3%");

// Queries.
ERROR_TAG(tError_XPath_CantEvaluate,
          "The XML document is invalid for XPath exception.\n"
          "Can not evaluate result of expression '%1%'");
ERROR_TAG(tError_XPath_TypesMismatch, "The result of expression '%1%' is not a '%2%' type");
ERROR_TAG(NoParentNode, "No parent node on requested XML element");

// Checks. A failed check against a schema is told in the words of the first as well.
ERROR_TAG(InternalDtdValidationFailed,
          "Failed validation of the document with its internal DTD. The errors are: %1%.");
ERROR_TAG(ExternalDtdValidationFailed,
          "Failed validation of the document with external DTD %1%. The errors are: %2%.");
ERROR_TAG(InvalidDtdFile, "The DTD file %1% is invalid");

// Stylesheets.
ERROR_TAG(tError_XslParse_CanNotParseFile, "Can not parse XSLT file '%1%'");
ERROR_TAG(tError_Xslt_ApplyStylesheetTerminated,
          "The translation of XML document was terminated by XSLT stylesheet. "
          "Check for the error reason and try again.");
ERROR_TAG(tError_Xslt_CantApplyStylesheet, "Can not apply stylesheet");
