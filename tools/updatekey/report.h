// What the commands tell, for people and, with --json, for scripts.
#pragma once

#include <filesystem>
#include <string>

#include "tools/updatekey/check.h"
#include "tools/updatekey/make.h"
#include "tools/updatekey/rehearse.h"

std::string checkText(const CheckReport& report);
std::string checkJson(const CheckReport& report);
std::string makeText(const MakeReport& report, const std::filesystem::path& out);
std::string makeJson(const MakeReport& report, const std::filesystem::path& out);
std::string infoText(const std::filesystem::path& key);
std::string infoJson(const std::filesystem::path& key);
std::string rehearseText(const RehearseReport& report);
std::string rehearseJson(const RehearseReport& report);
