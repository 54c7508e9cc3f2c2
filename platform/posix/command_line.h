// The command line that the program asks for.
#pragma once

namespace host {

// Joins the arguments of main with blanks; one that holds blanks is put between quotes, so that
// they can be told apart again.
void setCommandLine(int count, const char* const* arguments);

}  // namespace host
