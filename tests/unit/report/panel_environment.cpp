// Gives the test program its panel.
#include "../xml/panel_box.h"

namespace {

[[maybe_unused]] const testing::Environment* const box =
    testing::AddGlobalTestEnvironment(new test::PanelBox);

}  // namespace
