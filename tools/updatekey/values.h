// Values on the command line and in the environment, taken only when they are meant as such.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

// Bytes from "64mb", "1 GiB", "4096"; kb, mb and gb count by 1024. Throws std::runtime_error for
// anything that is no number above 0, or one of more than an exbibyte.
uint64_t parseSize(const std::string& text);

// Languages from a list such as "0,fr,jp": their numbers, or the letters of their string tables.
// Throws std::runtime_error, naming all there are, for another one.
std::vector<int32_t> parseLanguages(const std::string& text);

// Seconds since 1970 from SOURCE_DATE_EPOCH; -1 when it is not set. Throws std::runtime_error when
// it is set to anything but a number that is not negative.
int64_t sourceDateEpoch();
