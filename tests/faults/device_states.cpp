#include "tests/faults/device_states.h"

#include <algorithm>

namespace fs = std::filesystem;

const std::vector<NamedState> START_STATES = {
    {StartState::Plain, "plain"},
    {StartState::NoBackup, "no backup"},
    {StartState::ApplicationMissing, "no KSTRL"},
    {StartState::GuiDataMissing, "no ORBUI"},
    {StartState::LeftoverStaging, "leftover"},
    {StartState::ReadOnlyFiles, "read-only"},
    {StartState::GuiDataLocked, "locked"},
};

const std::vector<std::string> COMPONENTS = {"KSTRL", "ORBUI"};

namespace {

const std::string KEY = "USB HD/VELD/";

void writeApplication(const DeviceFolder& device, const std::string& folder,
                      const std::string& version) {
    for (const char* name : {"KSTRL.exe", "kstrl.dll", "settings.ini"})
        device.write(folder + name, std::string(name) + " of " + version);
}

void writeGuiData(const DeviceFolder& device, const std::string& folder,
                  const std::string& version) {
    for (const char* name : {"data/menu.raw", "data/fonts/face.fnt", "data/fonts/face.raw",
                             "data/lang/StringTable_en.txt"})
        device.write(folder + name, std::string(name) + " of " + version);
}

// Files that no update may touch.
void writeBystanders(const DeviceFolder& device) {
    device.write(INSTALLATION + "Projects/survey.dzt", "a day in the field");
    device.write("FlashDisk/OTHER/KSTRL/KSTRL.exe", "of another maker");
    device.write("registry.reg", "Windows Registry Editor Version 5.00\n");
}

void setAllReadOnly(const DeviceFolder& device, const std::string& folder) {
    for (const auto& [name, bytes] : device.tree(folder)) {
        if (name.back() != '/')
            device.setReadOnly(folder + name);
    }
}

}  // namespace

void makeDevice(const DeviceFolder& device, StartState state) {
    writeBystanders(device);
    writeApplication(device, INSTALLATION + "KSTRL/", "1");
    writeGuiData(device, INSTALLATION + "ORBUI/", "1");
    device.write(INSTALLATION + "KSTRL/gone.dll", "not in version 2");
    if (state != StartState::NoBackup) {
        writeApplication(device, INSTALLATION + "KSTRL_old/", "0");
        writeGuiData(device, INSTALLATION + "ORBUI_old/", "0");
    }
    writeApplication(device, KEY + "KSTRL/", "2");
    writeGuiData(device, KEY + "ORBUI/", "2");
    device.write(KEY + "KSTRL/two.dll", "only in version 2");
    device.write(KEY + "kstrXReleaseNotes.txt", "KSTRL Release 2\nbetter\n");

    if (state == StartState::ApplicationMissing)
        fs::remove_all(device.root() / (INSTALLATION + "KSTRL"));
    if (state == StartState::GuiDataMissing)
        fs::remove_all(device.root() / (INSTALLATION + "ORBUI"));
    if (state == StartState::LeftoverStaging) {
        device.write(STAGING + "KSTRL/KSTRL.exe", "KSTRL.exe of 2");
        device.write(STAGING + "KSTRL/kstrl.dll", "kstrl.");
        device.makeFolder(STAGING + "ORBUI/data");
    }
    if (state == StartState::ReadOnlyFiles) {
        for (const char* name : {"KSTRL/", "KSTRL_old/", "ORBUI/", "ORBUI_old/"})
            setAllReadOnly(device, INSTALLATION + name);
        setAllReadOnly(device, KEY);
    }
}

void plugInNewerKey(const DeviceFolder& device) {
    fs::remove_all(device.root() / "USB HD");
    writeApplication(device, KEY + "KSTRL/", "3");
    writeGuiData(device, KEY + "ORBUI/", "3");
    device.write(KEY + "KSTRL/three.dll", "only in version 3");
    device.write(KEY + "kstrXReleaseNotes.txt", "KSTRL Release 3\nbest\n");
}

Tree below(const Tree& tree, const std::string& folder) {
    Tree part;
    for (auto entry = tree.upper_bound(folder);
         entry != tree.end() && entry->first.compare(0, folder.size(), folder) == 0; ++entry)
        part[entry->first.substr(folder.size())] = entry->second;
    return part;
}

Tree filesOfKey(const Tree& tree, const std::string& component) {
    return below(tree, KEY + component + "/");
}

bool isUpdated(const Tree& tree) {
    return std::all_of(COMPONENTS.begin(), COMPONENTS.end(), [&](const std::string& component) {
        return below(tree, INSTALLATION + component + "/") == filesOfKey(tree, component);
    });
}
