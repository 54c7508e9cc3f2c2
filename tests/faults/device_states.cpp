#include "tests/faults/device_states.h"

#include <algorithm>

namespace fs = std::filesystem;

namespace {

const std::string KEY = "USB HD/VELD/";

// Writes the files of a version. `suffix` is appended to the names of its two folders.
void writeVersion(const DeviceFolder& device, const std::string& parent, const std::string& suffix,
                  const std::string& version) {
    for (const std::string path :
         {"KSTRL/KSTRL.exe", "KSTRL/kstrl.dll", "KSTRL/settings.ini", "ORBUI/data/menu.raw",
          "ORBUI/data/fonts/face.fnt", "ORBUI/data/fonts/face.raw",
          "ORBUI/data/lang/StringTable_en.txt"})
        device.write(parent + path.substr(0, 5) + suffix + path.substr(5), path + " of " + version);
}

void setAllReadOnly(const DeviceFolder& device, const std::string& folder) {
    for (const auto& [name, bytes] : device.tree(folder))
        if (name.back() != '/')
            device.setReadOnly(folder + name);
}

}  // namespace

void makeDevice(const DeviceFolder& device, const std::string& state) {
    // Files that no update may touch.
    device.write(INSTALLATION + "Projects/survey.dzt", "a day in the field");
    device.write("FlashDisk/OTHER/KSTRL/KSTRL.exe", "of another maker");
    device.write("registry.reg", "Windows Registry Editor Version 5.00\n");

    writeVersion(device, INSTALLATION, "", "1");
    device.write(INSTALLATION + "KSTRL/gone.dll", "not in version 2");
    if (state != "no backup")
        writeVersion(device, INSTALLATION, "_old", "0");
    writeVersion(device, KEY, "", "2");
    device.write(KEY + "KSTRL/two.dll", "only in version 2");
    device.write(KEY + "kstrXReleaseNotes.txt", "KSTRL Release 2\nbetter\n");

    for (const std::string& component : COMPONENTS)
        if (state == "no " + component)
            fs::remove_all(device.root() / (INSTALLATION + component));
    if (state == "leftover") {
        device.write(STAGING + "KSTRL/KSTRL.exe", "KSTRL/KSTRL.exe of 2");
        device.write(STAGING + "KSTRL/kstrl.dll", "KSTRL/");
        device.makeFolder(STAGING + "ORBUI/data");
    }
    if (state == "read-only") {
        for (const char* name : {"KSTRL/", "KSTRL_old/", "ORBUI/", "ORBUI_old/"})
            setAllReadOnly(device, INSTALLATION + name);
        setAllReadOnly(device, KEY);
    }
}

void plugInNewerKey(const DeviceFolder& device) {
    fs::remove_all(device.root() / "USB HD");
    writeVersion(device, KEY, "", "3");
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
