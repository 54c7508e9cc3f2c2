#include "tools/updatekey/make/disk_image.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <stdexcept>

#include "tools/host/file_changes.h"
#include "tools/host/file_time.h"
#include "tools/host/folder_tree.h"
#include "tools/host/process.h"
#include "tools/host/temporary_folder.h"
#include "tools/updatekey/check/key_paths.h"

namespace fs = std::filesystem;

namespace {

constexpr uint64_t SECTOR = 512;
// Sticks usually have one partition that starts at 1 MiB.
constexpr uint64_t PARTITION_START = 2048;
// Above the largest number of clusters of FAT16, with a margin.
constexpr uint64_t LEAST_CLUSTERS = 65'536;
// For the boot sector, its copy, and the alignment that mkfs.vfat adds.
constexpr uint64_t RESERVED_SECTORS = 128;
constexpr const char* VOLUME_ID = "4B455354";
constexpr const char* VOLUME_NAME = "KESTREL";

uint64_t roundUp(uint64_t number, uint64_t unit) {
    return (number + unit - 1) / unit * unit;
}

// Returns a cluster size in bytes that all systems accept for a volume of that size.
uint64_t clusterSizeFor(uint64_t bytes) {
    constexpr uint64_t MEBI = uint64_t{1} << 20;
    if (bytes < 256 * MEBI)
        return SECTOR;
    uint64_t cluster = 4096;
    for (uint64_t limit = 8192 * MEBI; bytes >= limit && cluster < 32'768; limit *= 2)
        cluster *= 2;
    return cluster;
}

// Returns a number of clusters that holds the files and folders of a tree. In its folder an entry
// takes 32 bytes, and another 32 for every 13 characters of its long name.
uint64_t clustersOf(const std::vector<TreeEntry>& tree, uint64_t cluster) {
    constexpr uint64_t LARGEST_ENTRY = 32 + 20 * 32;
    uint64_t clusters = 1;
    for (const TreeEntry& entry : tree)
        clusters += 1 + roundUp(entry.size + LARGEST_ENTRY, cluster) / cluster;
    return clusters;
}

struct Layout {
    uint64_t start;           // of the file system, in sectors
    uint64_t sectors;         // of the file system
    uint64_t clusterSectors;  // sectors per cluster
};

// Returns the smallest file system that holds the tree with this cluster size.
uint64_t sectorsFor(const std::vector<TreeEntry>& tree, uint64_t cluster) {
    constexpr uint64_t FAT_ENTRY = 4;
    const uint64_t clusters = std::max(LEAST_CLUSTERS, clustersOf(tree, cluster));
    const uint64_t tables = 2 * roundUp((clusters + 2) * FAT_ENTRY, cluster);
    return RESERVED_SECTORS + (tables + clusters * cluster) / SECTOR;
}

Layout layOut(const std::vector<TreeEntry>& tree, const ImageOptions& options) {
    uint64_t content = 0;
    for (const TreeEntry& entry : tree)
        content += entry.size;
    const uint64_t cluster = clusterSizeFor(options.size > 0 ? options.size : content);
    const uint64_t start = options.noPartitionTable ? 0 : PARTITION_START;
    const uint64_t needed = sectorsFor(tree, cluster);
    const uint64_t given = options.size / SECTOR;
    if (options.size > 0 && given < start + needed)
        throw std::runtime_error("the key needs an image of at least " +
                                 std::to_string((start + needed) * SECTOR) +
                                 " bytes; give a larger --size, or none");
    return {start, options.size > 0 ? given - start : needed, cluster / SECTOR};
}

// The form in which mtools expects a file system in a file.
std::string driveOf(const fs::path& image, uint64_t start) {
    return image.string() + "@@" + std::to_string(start * SECTOR);
}

// Copies the files in sorted order, so that the image does not depend on the key's file system, and
// at most 500 at a time, because the length of a command line is limited.
void fill(const std::string& drive, const fs::path& key, const std::vector<TreeEntry>& tree) {
    const std::vector<std::string> clock = {
        "env", "MTOOLS_SKIP_CHECK=1", "SOURCE_DATE_EPOCH=" + std::to_string(newestChange(key))};
    std::map<std::string, std::vector<std::string>> filesOf;
    std::vector<std::string> makeFolders = clock;
    makeFolders.insert(makeFolders.end(), {"mmd", "-i", drive});
    for (const TreeEntry& entry : tree) {
        if (entry.kind == TreeEntry::Kind::Folder)
            makeFolders.push_back("::/" + entry.path);
        else
            filesOf[parentOf(entry.path)].push_back((key / entry.path).string());
    }
    outputOf(makeFolders);
    constexpr std::size_t AT_ONCE = 500;
    for (const auto& [folder, files] : filesOf) {
        for (std::size_t first = 0; first < files.size(); first += AT_ONCE) {
            std::vector<std::string> copy = clock;
            copy.insert(copy.end(), {"mcopy", "-m", "-i", drive});
            const std::size_t last = std::min(first + AT_ONCE, files.size());
            copy.insert(copy.end(), files.begin() + static_cast<std::ptrdiff_t>(first),
                        files.begin() + static_cast<std::ptrdiff_t>(last));
            copy.push_back("::/" + folder);
            outputOf(copy);
        }
    }
}

void format(const fs::path& image, const Layout& layout) {
    std::ofstream(image, std::ios::binary).close();
    fs::resize_file(image, (layout.start + layout.sectors) * SECTOR);
    if (layout.start > 0)
        outputOf({"sfdisk", "--quiet", image.string()},
                 "label: dos\nlabel-id: 0x" + std::string(VOLUME_ID) +
                     "\nstart=" + std::to_string(layout.start) + ", type=c\n");
    outputOf({"mkfs.vfat", "-F", "32", "-S", std::to_string(SECTOR), "-s",
              std::to_string(layout.clusterSectors), "-i", VOLUME_ID, "-n", VOLUME_NAME,
              "--invariant", "--offset=" + std::to_string(layout.start), image.string(),
              std::to_string(layout.sectors * SECTOR / 1024)});
}

// Returns the starts of the file systems: the partitions, or 0 without a partition table.
std::vector<uint64_t> startsIn(const fs::path& image) {
    std::vector<uint64_t> starts;
    try {
        const auto table = nlohmann::json::parse(outputOf({"sfdisk", "--json", image.string()}));
        for (const auto& partition : table.at("partitiontable").at("partitions"))
            starts.push_back(partition.at("start").get<uint64_t>());
    } catch (const std::exception&) {
        // sfdisk reports a file without a table as a failure.
    }
    return starts.empty() ? std::vector<uint64_t>{0} : starts;
}

// Lists what is directly in a file system of the image; nothing when it is not a FAT file system.
std::optional<std::string> listing(const fs::path& image, uint64_t start) {
    try {
        return outputOf(
            {"env", "MTOOLS_SKIP_CHECK=1", "mdir", "-b", "-i", driveOf(image, start), "::/"});
    } catch (const std::runtime_error&) {
        return std::nullopt;
    }
}

// Extracts the image and compares its files with those of the key. Throws std::runtime_error when
// they differ.
void requireSameFiles(const fs::path& key, const fs::path& image) {
    const TemporaryFolder copy(fs::temp_directory_path() / "updatekey-image");
    unpackImage(image, copy.path());
    if (!compareFiles(filesIn(key / keypaths::MAKER), filesIn(copy.path() / keypaths::MAKER))
             .empty())
        throw std::runtime_error("the image differs from the key when it is read back");
}

}  // namespace

ImageReport makeImage(const ImageOptions& options, const CheckOptions& check) {
    if (fs::exists(fs::symlink_status(options.out)))
        throw std::runtime_error(options.out.string() + " already exists; choose another name");
    ImageReport report;
    report.check = checkKey(options.key, check);
    if (hasErrors(report.check.findings))
        return report;
    const std::vector<TreeEntry> tree = readTree(options.key);
    const Layout layout = layOut(tree, options);
    const TemporaryFolder temporary(fs::absolute(options.out));
    const fs::path image = temporary.path() / "image";
    format(image, layout);
    fill(driveOf(image, layout.start), options.key, tree);
    requireSameFiles(options.key, image);
    report.bytes = fs::file_size(image);
    fs::rename(image, options.out);
    report.written = true;
    return report;
}

bool mayBeImage(const fs::path& path) {
    return fs::is_regular_file(path) || fs::is_block_file(path);
}

void unpackImage(const fs::path& image, const fs::path& to) {
    const std::vector<uint64_t> starts = startsIn(image);
    const std::optional<std::string> content = listing(image, starts.front());
    const auto holdsKey = [&](uint64_t start) {
        return listing(image, start).value_or("").find("::/" + keypaths::MAKER + "/") !=
               std::string::npos;
    };
    const auto other = std::find_if(std::next(starts.begin()), starts.end(), holdsKey);
    const std::string name = image.string();
    if (other != starts.end() && !holdsKey(starts.front()))
        throw std::runtime_error(name + " has its key in partition " +
                                 std::to_string(other - starts.begin() + 1) +
                                 "; put it into the first one");
    if (!content)
        throw std::runtime_error(name + " has no FAT file system" +
                                 (starts.front() > 0 ? " in its first partition" : "") +
                                 "; is it a disk image?");
    if (content->empty())
        throw std::runtime_error(name + " is an image of an empty stick");
    outputOf({"env", "MTOOLS_SKIP_CHECK=1", "mcopy", "-s", "-m", "-n", "-Q", "-i",
              driveOf(image, starts.front()), "::/*", to.string()});
}
