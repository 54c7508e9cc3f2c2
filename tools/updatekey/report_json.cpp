// The same reports as JSON.

#include <nlohmann/json.hpp>

#include "tools/updatekey/info.h"
#include "tools/updatekey/report.h"

namespace {

using Json = nlohmann::ordered_json;

Json toJson(const Findings& findings) {
    Json list = Json::array();
    for (const Finding& finding : findings)
        list.push_back({{"severity", finding.severity == Severity::error ? "error" : "warning"},
                        {"code", finding.code},
                        {"path", finding.path},
                        {"text", finding.text}});
    return list;
}

Json toJson(const CheckReport& report) {
    return {{"seen", report.prediction.seen},       {"state", stateName(report.prediction.state)},
            {"version", report.prediction.version}, {"copied", report.prediction.copied},
            {"lost", report.prediction.lost},       {"notCopied", report.notCopied},
            {"copiedBytes", report.copiedBytes},    {"flashNeeded", report.flashNeeded},
            {"findings", toJson(report.findings)}};
}

Json toJson(const FolderInfo& folder) {
    return {{"files", folder.files}, {"bytes", folder.bytes}};
}

// Names that are not UTF-8 are shown with replacement characters.
std::string print(const Json& json) {
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

const char* kindName(KeyEntry::Kind kind) {
    switch (kind) {
        case KeyEntry::Kind::file:
            return "file";
        case KeyEntry::Kind::folder:
            return "folder";
        case KeyEntry::Kind::link:
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

std::string infoJson(const std::filesystem::path& key) {
    const KeyInfo info = describeKey(key);
    Json tree = Json::array();
    for (const KeyEntry& entry : info.tree)
        tree.push_back(
            {{"path", entry.path}, {"kind", kindName(entry.kind)}, {"bytes", entry.size}});
    return print({{"seen", info.seen},
                  {"version", info.version},
                  {"notes", info.notes},
                  {"manifest", info.hasManifest},
                  {"application", toJson(info.application)},
                  {"guiData", toJson(info.guiData)},
                  {"whole", toJson(info.whole)},
                  {"tree", tree}});
}

std::string rehearseJson(const RehearseReport& report) {
    Json differences = Json::array();
    for (const auto& [path, kind] : report.differences)
        differences.push_back({{"path", path}, {"change", std::string(1, kind)}});
    return print({{"check", toJson(report.check)},
                  {"rehearsed", report.rehearsed},
                  {"state", stateName(report.state)},
                  {"asPredicted", report.asPredicted},
                  {"applicationStarted", report.applicationStarted},
                  {"timedOut", report.timedOut},
                  {"exitCode", report.exitCode},
                  {"seconds", report.seconds},
                  {"frames", report.frames},
                  {"log", report.log},
                  {"output", report.output},
                  {"differences", differences}});
}
