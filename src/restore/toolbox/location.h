// Country, state and zip code of contact data. The panel refuses a location in the United States
// or Canada without a state and a zip code.
#pragma once

#include <string>

namespace zelvo {

// True for "US" and "CA".
bool american(const std::string& country);

// True when the panel would refuse the location: American, with no state or no zip code.
bool incompleteAmerican(const std::string& country, const std::string& state,
                        const std::string& zip);

// Fills the missing one of state and zip from the administrator's own location, and takes the
// administrator's country with it. Nothing is taken from an administrator who is not American. The
// panel is asked once a process; that it fails or gives no such answer is told, once, and then
// nothing is taken.
void completeLocation(std::string& country, std::string& state, std::string& zip);

}  // namespace zelvo
