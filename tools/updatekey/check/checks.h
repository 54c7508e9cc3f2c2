// The checks of a key, each in a file of its name.
#pragma once

#include "tools/updatekey/check/key_under_check.h"

void checkLayout(KeyUnderCheck& key);
void checkApplication(KeyUnderCheck& key);
void checkDropped(KeyUnderCheck& key);
void checkNames(KeyUnderCheck& key);
void checkNotes(KeyUnderCheck& key);
void checkFonts(KeyUnderCheck& key);
void checkTexts(KeyUnderCheck& key);
void checkSpace(KeyUnderCheck& key);
// Also sets the report's state of the manifest.
void checkManifest(KeyUnderCheck& key);
