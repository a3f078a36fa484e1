// The include graph of the product's own files, read from the sources: no include runs up a
// layer (also not by a bare "File.h" include from the same folder, which the compiler would
// resolve beside the including file whatever the layer's include directory), and no two
// files include each other, directly or round a longer cycle.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

struct Layer {
    std::string name;
    std::set<std::string> files; // absolute paths of the layer's .h and .cpp files
};

std::set<std::string> readListing(const std::string& path) {
    std::set<std::string> files;
    std::ifstream in(path);
    std::string line;
    while (std::getline(in, line))
        if (!line.empty())
            files.insert(fs::weakly_canonical(line).string());
    return files;
}

const std::vector<Layer>& layers() {
    // Lowest first: a file sees its own layer and the ones before it.
    static const std::vector<Layer> all = {
        {"quorvane_core", readListing(QUORVANE_LAYERS_DIR "/quorvane_core.sources")},
        {"quorvane_ui", readListing(QUORVANE_LAYERS_DIR "/quorvane_ui.sources")}};
    return all;
}

int layerOf(const std::string& file) {
    for (std::size_t i = 0; i < layers().size(); ++i)
        if (layers()[i].files.count(file) != 0)
            return static_cast<int>(i);
    return -1;
}

// The repository files that `file` includes with quotes: "Folder/File.h" from the root, or
// a bare "File.h" beside the including file. Generated and outside files are left out.
std::vector<std::string> includesOf(const std::string& file) {
    std::vector<std::string> found;
    std::ifstream in(file);
    std::string line;
    const std::string root = fs::weakly_canonical(QUORVANE_TEST_SOURCE_DIR).string();
    while (std::getline(in, line)) {
        const std::size_t hash = line.find_first_not_of(" \t");
        if (hash == std::string::npos || line.compare(hash, 8, "#include") != 0)
            continue;
        const std::size_t open = line.find('"');
        const std::size_t close = open == std::string::npos ? open : line.find('"', open + 1);
        if (close == std::string::npos)
            continue;
        const std::string name = line.substr(open + 1, close - open - 1);
        for (const fs::path& candidate :
             {fs::path(file).parent_path() / name, fs::path(root) / name}) {
            if (fs::exists(candidate)) {
                found.push_back(fs::weakly_canonical(candidate).string());
                break;
            }
        }
    }
    return found;
}

std::string shortName(const std::string& file) {
    return fs::relative(file, QUORVANE_TEST_SOURCE_DIR).string();
}

} // namespace

TEST(IncludeLayering, TheLayerListingsAreThere) {
    ASSERT_EQ(layers().size(), 2u);
    EXPECT_GT(layers()[0].files.size(), 100u);
    EXPECT_GT(layers()[1].files.size(), 100u);
    EXPECT_EQ(layerOf(fs::weakly_canonical(QUORVANE_TEST_SOURCE_DIR "/Range/HandRange.h")), 0);
    EXPECT_EQ(layerOf(fs::weakly_canonical(QUORVANE_TEST_SOURCE_DIR "/app/Quorvane.h")), 1);
}

TEST(IncludeLayering, NoFileIncludesAHigherLayer) {
    for (std::size_t level = 0; level < layers().size(); ++level) {
        for (const std::string& file : layers()[level].files) {
            for (const std::string& included : includesOf(file)) {
                const int includedLevel = layerOf(included);
                EXPECT_NE(includedLevel, -1) << shortName(file) << " includes "
                                             << shortName(included) << ", which no layer builds";
                EXPECT_LE(includedLevel, static_cast<int>(level))
                    << shortName(file) << " (" << layers()[level].name << ") includes "
                    << shortName(included) << " of a higher layer";
            }
        }
    }
}

TEST(IncludeLayering, NoIncludeCycle) {
    std::map<std::string, std::vector<std::string>> graph;
    for (const Layer& layer : layers())
        for (const std::string& file : layer.files)
            graph[file] = includesOf(file);
    // Depth-first search; a file met again while still on the path closes a cycle.
    enum class Mark { New, OnPath, Done };
    std::map<std::string, Mark> marks;
    std::vector<std::string> path;
    std::vector<std::string> cycles;
    std::function<void(const std::string&)> visit = [&](const std::string& file) {
        marks[file] = Mark::OnPath;
        path.push_back(file);
        for (const std::string& next : graph[file]) {
            if (marks[next] == Mark::OnPath) {
                std::string cycle;
                for (auto at = std::find(path.begin(), path.end(), next); at != path.end(); ++at)
                    cycle += shortName(*at) + " -> ";
                cycles.push_back(cycle + shortName(next));
            } else if (marks[next] == Mark::New) {
                visit(next);
            }
        }
        path.pop_back();
        marks[file] = Mark::Done;
    };
    for (const auto& entry : graph)
        if (marks[entry.first] == Mark::New)
            visit(entry.first);
    for (const std::string& cycle : cycles)
        ADD_FAILURE() << "include cycle: " << cycle;
}
