// A port of 127.0.0.1 for a server that cannot choose one itself.
#pragma once

// Returns a port that nobody listens on at the moment. Throws std::runtime_error.
int freePort();
