#include "content/cid.h"

#include <gmock/gmock.h>

#include "../exec/recording_log.h"
#include "commons/errors.h"
#include "xml/xml_document.h"

using namespace zelvo;
using testing::ElementsAre;
using testing::IsEmpty;
