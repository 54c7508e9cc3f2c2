// Parses values of the command line and the environment strictly.
#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <vector>

// Parses a size: "4096", "64mb"; kb, mb and gb are powers of 1024. Throws std::runtime_error unless
// it is a number above 0 and at most one exbibyte.
uint64_t parseSize(const std::string& text);

// Parses a list of languages such as "0,fr,jp": numbers, or the suffixes of string tables. Throws
// std::runtime_error, listing all languages, for an unknown one.
std::vector<int32_t> parseLanguages(const std::string& text);

// Parses a list of codes of findings. Throws std::runtime_error for an unknown one.
std::set<std::string> parseFindings(const std::string& text);

// Returns SOURCE_DATE_EPOCH, seconds since 1970; -1 when it is not set. Throws std::runtime_error
// when it is not a number of at least 0.
int64_t sourceDateEpoch();
