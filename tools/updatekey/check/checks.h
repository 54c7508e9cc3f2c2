// The individual checks of a key, each in a file of its name. They add their findings to the
// report.
#pragma once

#include "tools/updatekey/check/check.h"
#include "tools/updatekey/check/key_under_check.h"

void checkLayout(const KeyUnderCheck& key, CheckReport& report);
void checkApplication(const KeyUnderCheck& key, CheckReport& report);
void checkDropped(const KeyUnderCheck& key, CheckReport& report);
void checkNames(const KeyUnderCheck& key, CheckReport& report);
void checkNotes(const KeyUnderCheck& key, CheckReport& report);
void checkFonts(const KeyUnderCheck& key, CheckReport& report);
void checkTexts(const KeyUnderCheck& key, CheckReport& report);
void checkSpace(const KeyUnderCheck& key, CheckReport& report);
// Also sets the report's state of the manifest.
void checkManifest(const KeyUnderCheck& key, CheckReport& report);
