// Lines on standard error.
#pragma once

#include <string_view>

namespace host {

// Writes the line and a line end to standard error. Drops what cannot be written at once, because
// nobody may be reading: an update must not wait for a reader.
void tell(std::string_view line);

}  // namespace host
