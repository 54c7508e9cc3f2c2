// The command line that GetCommandLineW returns.
#pragma once

namespace host {

// Joins the arguments of main with blanks. An argument that contains blanks is put in quotes.
void setCommandLine(int count, const char* const* arguments);

}  // namespace host
