// The settings record that the instrument's programs share: folders and the network share.
#pragma once

#include <string>

struct SystemSettings {
    // The process-wide record, made on first use.
    static SystemSettings& instance();

    // The folder of the GUI data, with a separator at its end. Empty until the screen is set up.
    std::string dataFolder;

    // The fields below belong to the main application; the updater reads none of them.
    std::string reserved2;
    std::string filtersFolder = "Filters";
    std::string usbMountPath = "/USB HD";
    std::string remoteHostName = "KESTREL-OFFICE";
    std::string shareName = "RADARDATA";
    std::string workgroup = "WORKGROUP";
    std::string userName = "KES";
    std::string logonSecret = "letmein8";
    std::string reserved10;
};
