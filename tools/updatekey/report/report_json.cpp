// The reports as JSON.

#include <nlohmann/json.hpp>

#include "tools/updatekey/report/report.h"

using Json = nlohmann::ordered_json;

// The JSON library calls these functions for the elements of lists.

void to_json(Json& json, const Finding& finding) {
    json = {{"severity", finding.severity == Severity::Error ? "error" : "warning"},
            {"code", finding.code},
            {"path", finding.path},
            {"text", finding.text}};
}

void to_json(Json& json, const FileChange& change) {
    json = {{"path", change.path},
            {"change", nameOf(change.kind)},
            {"bytesBefore", change.before},
            {"bytesAfter", change.after}};
}

void to_json(Json& json, const CheckReport& report) {
    json = {{"accepted", report.prediction.accepted}, {"state", stateName(report.prediction.state)},
            {"version", report.prediction.version},   {"copied", report.prediction.copied},
            {"lost", report.prediction.lost},         {"notCopied", report.notCopied},
            {"copiedBytes", report.copiedBytes},      {"flashNeeded", report.flashNeeded},
            {"manifest", textOf(report.manifest)},    {"findings", report.findings}};
}

void to_json(Json& json, const FolderInfo& folder) {
    json = {{"files", folder.files}, {"bytes", folder.bytes}};
}

void to_json(Json& json, const StickReport& stick) {
    json = {{"stick", stick.stick.generic_string()},
            {"good", stick.problem.empty()},
            {"problem", stick.problem},
            {"kept", stick.kept},
            {"ejected", stick.ejected},
            {"notEjected", stick.notEjected},
            {"seconds", stick.seconds}};
}

void to_json(Json& json, const Stick& stick) {
    json = {{"folder", stick.volume.folder.generic_string()},
            {"label", stick.volume.label},
            {"fileSystem", stick.volume.fileSystem},
            {"bytes", stick.room.size},
            {"free", stick.room.free},
            {"update", stick.update},
            {"problem", stick.problem}};
}

void to_json(Json& json, const FolderFinding& folder) {
    json = {{"name", folder.name},   {"there", folder.there},     {"files", folder.files},
            {"bytes", folder.bytes}, {"version", folder.version}, {"onlyCopy", folder.onlyCopy}};
}

void to_json(Json& json, const LogLine& line) {
    json = {{"line", line.text}, {"meaning", line.meaning}};
}

void to_json(Json& json, const Advice& step) {
    json = {{"action", nameOf(step.action)},
            {"folder", step.folder},
            {"to", step.to},
            {"text", step.text}};
}

namespace {

// The version of the format. It is raised when a field is removed or changes its meaning, but not
// when a field is added.
constexpr int FORMAT = 2;

// Replaces invalid UTF-8 in names by replacement characters.
std::string print(const Json& report) {
    Json json = {{"format", FORMAT}};
    json.update(report);
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace

std::string checkJson(const CheckReport& report) {
    return print(report);
}

std::string makeJson(const MakeReport& report, const std::filesystem::path& out) {
    return print({{"written", report.written},
                  {"key", out.generic_string()},
                  {"leftOut", report.leftOut},
                  {"check", report.check}});
}

std::string infoJson(const KeyInfo& info) {
    constexpr const char* KINDS[] = {"file", "folder", "link", "other"};
    Json tree = Json::array();
    for (const TreeEntry& entry : info.tree) {
        Json& item = tree.emplace_back();
        item = {{"path", entry.path},
                {"kind", KINDS[static_cast<std::size_t>(entry.kind)]},
                {"bytes", entry.size}};
        if (info.checksums.count(entry.path) != 0)
            item["sha256"] = info.checksums.at(entry.path);
    }
    return print({{"accepted", info.accepted},
                  {"version", info.version},
                  {"notes", info.notes},
                  {"manifest", textOf(info.manifest)},
                  {"application", info.application},
                  {"guiData", info.guiData},
                  {"whole", info.whole},
                  {"tree", tree}});
}

std::string rehearseJson(const RehearseReport& report) {
    return print({{"check", report.check},
                  {"rehearsed", report.rehearsed},
                  {"state", stateName(report.state)},
                  {"asPredicted", report.asPredicted},
                  {"startsHere", report.startsHere},
                  {"applicationStarted", report.applicationStarted},
                  {"timedOut", report.timedOut},
                  {"exitCode", report.exitCode},
                  {"seconds", report.seconds},
                  {"frames", report.frames},
                  {"log", report.log},
                  {"output", report.output},
                  {"changes", report.changes}});
}

std::string imageJson(const ImageReport& report, const std::filesystem::path& out) {
    return print({{"written", report.written},
                  {"image", out.generic_string()},
                  {"bytes", report.bytes},
                  {"check", report.check}});
}

std::string writeJson(const WriteReport& report) {
    return print(
        {{"allGood", report.allGood()}, {"sticks", report.sticks}, {"check", report.check}});
}

std::string sticksJson(const std::vector<Stick>& sticks) {
    return print({{"sticks", sticks}});
}

std::string differenceJson(const Difference& difference) {
    return print({{"versionBefore", difference.versionBefore},
                  {"versionAfter", difference.versionAfter},
                  {"notesDiffer", difference.notesDiffer()},
                  {"notesBefore", difference.notesBefore},
                  {"notesAfter", difference.notesAfter},
                  {"findings", difference.findings},
                  {"same", difference.same},
                  {"changes", difference.files}});
}

std::string diagnosisJson(const Diagnosis& diagnosis) {
    Json json = {{"sound", diagnosis.sound()},
                 {"startsAsItIs", diagnosis.hindrances.empty()},
                 {"hindrances", diagnosis.hindrances},
                 {"step", textOf(diagnosis.step).name},
                 {"folders", diagnosis.folders},
                 {"log", diagnosis.log.lines},
                 {"logLinesBefore", diagnosis.log.earlier},
                 {"findings", diagnosis.findings},
                 {"advice", diagnosis.advice}};
    if (diagnosis.changes)
        json["changes"] = *diagnosis.changes;
    return print(json);
}

std::string failureJson(const std::string& message) {
    return print({{"failure", message}});
}
