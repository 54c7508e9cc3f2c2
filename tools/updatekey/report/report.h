// The reports of the commands, as text and as JSON. In texts, the control characters of names and
// notes from a key or a device are replaced, so that they cannot control the terminal.
#pragma once

#include <filesystem>
#include <string>

#include "tools/diagnosis/diagnosis.h"
#include "tools/updatekey/check/check.h"
#include "tools/updatekey/difference.h"
#include "tools/updatekey/info.h"
#include "tools/updatekey/make/disk_image.h"
#include "tools/updatekey/make/make.h"
#include "tools/updatekey/rehearse/rehearse.h"
#include "tools/updatekey/write/sticks.h"
#include "tools/updatekey/write/targets.h"

std::string checkText(const CheckReport& report);
std::string makeText(const MakeReport& report, const std::filesystem::path& out);
std::string infoText(const KeyInfo& info);
std::string imageText(const ImageReport& report, const std::filesystem::path& out);
std::string writeText(const WriteReport& report);
std::string sticksText(const std::vector<Stick>& sticks);
std::string differenceText(const Difference& difference);
std::string rehearseText(const RehearseReport& report);
std::string diagnosisText(const Diagnosis& diagnosis);

// The short forms: one line per finding, per faulty stick and per advice.
std::string findingsText(const Findings& findings);
std::string stickProblems(const WriteReport& report);
std::string adviceText(const Diagnosis& diagnosis);

std::string checkJson(const CheckReport& report);
std::string makeJson(const MakeReport& report, const std::filesystem::path& out);
std::string infoJson(const KeyInfo& info);
std::string imageJson(const ImageReport& report, const std::filesystem::path& out);
std::string writeJson(const WriteReport& report);
std::string sticksJson(const std::vector<Stick>& sticks);
std::string differenceJson(const Difference& difference);
std::string rehearseJson(const RehearseReport& report);
std::string diagnosisJson(const Diagnosis& diagnosis);

// Formats a failure of the tool as JSON.
std::string failureJson(const std::string& message);
