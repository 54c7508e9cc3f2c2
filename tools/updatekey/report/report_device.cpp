// The reports on sticks, devices and rehearsals.

#include <algorithm>

#include "tools/host/printable.h"
#include "tools/updatekey/report/report.h"
#include "tools/updatekey/report/report_words.h"
#include "update/updater.h"

namespace {

std::string outcomeOf(const StickReport& stick) {
    if (!stick.problem.empty())
        return "NOT GOOD: " + printable(stick.problem);
    std::string text = "good, " + secondsWords(stick.seconds);
    for (const std::string& name : stick.kept)
        text += (name == stick.kept.front() ? "; left in VELD: " : ", ") + printable(name);
    if (stick.ejected)
        text += "; it may be pulled out";
    if (!stick.notEjected.empty())
        text += "; unmount it before you pull it out, because it was not ejected: " +
                printable(stick.notEjected);
    return text;
}

}  // namespace

std::string writeText(const WriteReport& report) {
    std::string text = checkText(report.check);
    if (report.sticks.empty())
        return text + "Nothing was written, because the key has errors.\n";
    std::size_t width = 0;
    for (const StickReport& stick : report.sticks)
        width = std::max(width, stick.stick.generic_string().size() + 2);
    for (const StickReport& stick : report.sticks)
        text += padded(stick.stick.generic_string(), width) + outcomeOf(stick) + "\n";
    return text;
}

std::string sticksText(const std::vector<Stick>& sticks) {
    std::string text;
    for (const Stick& stick : sticks) {
        const Volume& volume = stick.volume;
        text += printable(volume.folder.generic_string()) + "  " +
                (volume.label.empty() ? "without a label" : "\"" + printable(volume.label) + "\"") +
                ", " + volume.fileSystem + ", " + sizeWords(stick.room.size) + ", " +
                sizeWords(stick.room.free) + " free, " +
                (stick.update.empty() ? "no update" : "update " + printable(stick.update)) +
                (stick.problem.empty() ? "" : "\n    CANNOT BE WRITTEN: " + stick.problem) + "\n";
    }
    return sticks.empty() ? "No stick is mounted. Plug one in, and open it in the file manager.\n"
                          : text;
}

std::string stickProblems(const WriteReport& report) {
    std::string text = findingsText(report.check.findings);
    for (const StickReport& stick : report.sticks)
        if (!stick.problem.empty())
            text += stick.stick.generic_string() + ": " + printable(stick.problem) + "\n";
    return text;
}

std::string differenceText(const Difference& difference) {
    const auto version = [](const std::string& text) {
        return text.empty() ? std::string("unknown") : "\"" + printable(text) + "\"";
    };
    std::string text = "Version: " + version(difference.versionBefore) + " -> " +
                       version(difference.versionAfter) + "\n";
    text += findingsText(difference.findings) + changesText(difference.files);
    text += countWords(difference.files.size(), "file") + " differ" +
            (difference.files.size() == 1 ? "s, " : ", ") + std::to_string(difference.same) +
            " the same.\n";
    if (!difference.notesDiffer())
        return text;
    return text + "Release notes:\n" + linesText("  - ", difference.notesBefore) +
           linesText("  + ", difference.notesAfter);
}

std::string adviceText(const Diagnosis& diagnosis) {
    std::string text;
    std::size_t number = 0;
    for (const Advice& advice : diagnosis.advice)
        text += "  " + std::to_string(++number) + ". " + printable(advice.text) + "\n";
    return text;
}

std::string diagnosisText(const Diagnosis& diagnosis) {
    std::string text = "Installed:\n";
    for (const FolderFinding& folder : diagnosis.folders) {
        text += "  " + padded(printable(folder.name), 11);
        text += folder.there ? filesWords(folder.files, folder.bytes) : "not there";
        text += folder.version.empty() ? "" : ", version " + printable(folder.version);
        text += folder.onlyCopy ? ", the ONLY COPY of these files\n" : "\n";
    }
    const UpdateStepText& step = textOf(diagnosis.step);
    text += std::string(step.happened) + " On the disk: " + step.onDisk + ".\n";
    const LogReading& log = diagnosis.log;
    text += log.lines.empty() ? "There is no log.\n"
            : log.earlier == 0
                ? "The log:\n"
                : "The end of the log, after " + countWords(log.earlier, "other line") + ":\n";
    for (const LogLine& line : log.lines)
        text += "  " + line.text + "\n      " +
                (line.meaning.empty() ? "the updater writes no such line" : line.meaning) + "\n";
    text += findingsText(diagnosis.findings);
    if (diagnosis.changes)
        text +=
            (diagnosis.changes->empty() ? "The installed files are those of the key.\n"
                                        : "The installed files differ from those of the key:\n") +
            changesText(*diagnosis.changes);
    text += diagnosis.hindrances.empty() ? "The instrument can be started as it is.\n"
                                         : "The instrument cannot be started as it is:\n";
    text += linesText("  ", diagnosis.hindrances);
    return text + "What to do:\n" + adviceText(diagnosis);
}

std::string rehearseText(const RehearseReport& report) {
    std::string text = checkText(report.check);
    if (!report.rehearsed)
        return text + "The updater was not run, because the device would not accept the key.\n";
    text += "\nDifferences on the flash disk:\n";
    text += changesText(report.changes) + "\nThe log:\n" + report.log + "\n";
    text += "Took " + secondsWords(report.seconds);
    text += report.frames < 0 ? ".\n" : " and " + std::to_string(report.frames) + " frames.\n";
    if (report.timedOut)
        text += "The updater did not exit within the time limit, and was ended.\n";
    text += "State: " + std::string(stateName(report.state)) +
            (report.asPredicted ? ", with the files that were predicted.\n"
                                : "; this is NOT what was predicted.\n");
    text += report.applicationStarted ? "The application was started.\n"
            : report.startsHere
                ? "The application was not started.\n"
                : "The application was not started, because this computer cannot run it.\n";
    return text;
}
