// The program's one screen, which lives as long as the process.
#pragma once

#include "ui/simple_ui.h"

extern SimpleUI theScreen;
