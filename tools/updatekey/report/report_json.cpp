// The reports as JSON.

#include <nlohmann/json.hpp>

#include "tools/updatekey/report/report.h"

namespace {

using Json = nlohmann::ordered_json;

Json toJson(const Findings& findings) {
    Json list = Json::array();
    for (const Finding& finding : findings)
        list.push_back({{"severity", finding.severity == Severity::Error ? "error" : "warning"},
                        {"code", finding.code},
                        {"path", finding.path},
                        {"text", finding.text}});
    return list;
}

Json toJson(const std::vector<FileChange>& changes) {
    Json list = Json::array();
    for (const FileChange& change : changes)
        list.push_back({{"path", change.path},
                        {"change", nameOf(change.kind)},
                        {"bytesBefore", change.before},
                        {"bytesAfter", change.after}});
    return list;
}

Json toJson(const CheckReport& report) {
    return {{"accepted", report.prediction.accepted}, {"state", stateName(report.prediction.state)},
            {"version", report.prediction.version},   {"copied", report.prediction.copied},
            {"lost", report.prediction.lost},         {"notCopied", report.notCopied},
            {"copiedBytes", report.copiedBytes},      {"flashNeeded", report.flashNeeded},
            {"manifest", textOf(report.manifest)},    {"findings", toJson(report.findings)}};
}

Json toJson(const FolderInfo& folder) {
    return {{"files", folder.files}, {"bytes", folder.bytes}};
}

// The version of the format. It is raised when a field is removed or changes its meaning, but not
// when a field is added.
constexpr int FORMAT = 2;

// Replaces invalid UTF-8 in names by replacement characters.
std::string print(const Json& report) {
    Json json = {{"format", FORMAT}};
    json.update(report);
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

const char* kindName(TreeEntry::Kind kind) {
    switch (kind) {
        case TreeEntry::Kind::File:
            return "file";
        case TreeEntry::Kind::Folder:
            return "folder";
        case TreeEntry::Kind::Link:
            return "link";
        default:
            return "other";
    }
}

}  // namespace

std::string checkJson(const CheckReport& report) {
    return print(toJson(report));
}

std::string makeJson(const MakeReport& report, const std::filesystem::path& out) {
    return print({{"written", report.written},
                  {"key", out.string()},
                  {"leftOut", report.leftOut},
                  {"check", toJson(report.check)}});
}

std::string infoJson(const KeyInfo& info) {
    Json tree = Json::array();
    for (const TreeEntry& entry : info.tree) {
        Json item = {{"path", entry.path}, {"kind", kindName(entry.kind)}, {"bytes", entry.size}};
        const auto checksum = info.checksums.find(entry.path);
        if (checksum != info.checksums.end())
            item["sha256"] = checksum->second;
        tree.push_back(item);
    }
    return print({{"accepted", info.accepted},
                  {"version", info.version},
                  {"notes", info.notes},
                  {"manifest", textOf(info.manifest)},
                  {"application", toJson(info.application)},
                  {"guiData", toJson(info.guiData)},
                  {"whole", toJson(info.whole)},
                  {"tree", tree}});
}

std::string rehearseJson(const RehearseReport& report) {
    return print({{"check", toJson(report.check)},
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
                  {"changes", toJson(report.changes)}});
}

std::string imageJson(const ImageReport& report, const std::filesystem::path& out) {
    return print({{"written", report.written},
                  {"image", out.string()},
                  {"bytes", report.bytes},
                  {"check", toJson(report.check)}});
}

std::string writeJson(const WriteReport& report) {
    Json sticks = Json::array();
    for (const StickReport& stick : report.sticks)
        sticks.push_back({{"stick", stick.stick.string()},
                          {"good", stick.problem.empty()},
                          {"problem", stick.problem},
                          {"kept", stick.kept},
                          {"ejected", stick.ejected},
                          {"notEjected", stick.notEjected},
                          {"seconds", stick.seconds}});
    return print(
        {{"allGood", report.allGood()}, {"sticks", sticks}, {"check", toJson(report.check)}});
}

std::string sticksJson(const std::vector<Stick>& sticks) {
    Json list = Json::array();
    for (const Stick& stick : sticks)
        list.push_back({{"folder", stick.volume.folder.string()},
                        {"label", stick.volume.label},
                        {"fileSystem", stick.volume.fileSystem},
                        {"bytes", stick.room.size},
                        {"free", stick.room.free},
                        {"update", stick.update},
                        {"problem", stick.problem}});
    return print({{"sticks", list}});
}

std::string differenceJson(const Difference& difference) {
    return print({{"versionBefore", difference.versionBefore},
                  {"versionAfter", difference.versionAfter},
                  {"notesDiffer", difference.notesDiffer()},
                  {"notesBefore", difference.notesBefore},
                  {"notesAfter", difference.notesAfter},
                  {"findings", toJson(difference.findings)},
                  {"same", difference.same},
                  {"changes", toJson(difference.files)}});
}

std::string diagnosisJson(const Diagnosis& diagnosis) {
    Json folders = Json::array();
    for (const FolderFinding& folder : diagnosis.folders)
        folders.push_back({{"name", folder.name},
                           {"there", folder.there},
                           {"files", folder.files},
                           {"bytes", folder.bytes},
                           {"version", folder.version},
                           {"onlyCopy", folder.onlyCopy}});
    Json log = Json::array();
    for (const LogLine& line : diagnosis.log.lines)
        log.push_back({{"line", line.text}, {"meaning", line.meaning}});
    Json advice = Json::array();
    for (const Advice& step : diagnosis.advice)
        advice.push_back({{"action", nameOf(step.action)},
                          {"folder", step.folder},
                          {"to", step.to},
                          {"text", step.text}});
    Json json = {{"sound", diagnosis.sound()},
                 {"startsAsItIs", diagnosis.hindrances.empty()},
                 {"hindrances", diagnosis.hindrances},
                 {"step", textOf(diagnosis.step).name},
                 {"folders", folders},
                 {"log", log},
                 {"logLinesBefore", diagnosis.log.earlier},
                 {"findings", toJson(diagnosis.findings)},
                 {"advice", advice}};
    if (diagnosis.changes)
        json["changes"] = toJson(*diagnosis.changes);
    return print(json);
}

std::string failureJson(const std::string& message) {
    return print({{"failure", message}});
}
