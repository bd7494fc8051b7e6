#include "LargeHome.h"

#include "SamplePictures.h"
#include "SampleTree.h"

#include <fstream>
#include <string>

namespace tavrin::benchmarks {
namespace {

namespace fs = std::filesystem;

void write(const fs::path& path, const std::string& contents) {
    std::ofstream(path) << contents;
}

/// `count` files in each of `folders` folders.
void makeFiles(const fs::path& root, int folders, int count, const std::string& name, const std::string& extension,
               std::size_t bytes = 2'000) {
    const std::string contents(bytes, 'x');
    for (int folder = 0; folder < folders; ++folder) {
        const fs::path path = folders == 1 ? root : root / ("folder " + std::to_string(folder));
        fs::create_directories(path);
        for (int file = 0; file < count; ++file)
            write(path / (name + std::to_string(folder * count + file) + extension), contents);
    }
}

std::string propertyList(const std::string& entries) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>" + entries + "</dict></plist>\n";
}

std::string identifier(int app) {
    return "com.maker" + std::to_string(app % 40) + ".app-number-" + std::to_string(app);
}

void makeApps(const fs::path& home) {
    for (int app = 0; app < kApps; ++app) {
        const fs::path contents = home / "Applications" / ("App Number " + std::to_string(app) + ".app") / "Contents";
        fs::create_directories(contents / "Resources");
        write(contents / "Info.plist",
              propertyList("<key>CFBundleIdentifier</key><string>" + identifier(app) + "</string>"));
        for (int language = 0; language < kLanguages; ++language) {
            const fs::path folder = contents / "Resources" / ("x" + std::to_string(language) + ".lproj");
            fs::create_directory(folder);
            write(folder / "Localizable.strings", "words");
        }
    }
}

/// A fifth belongs to the apps. Enough of the others bear names that are none in ASCII.
void makeLeftovers(const fs::path& library) {
    for (int i = 0; i < kLeftoverCandidates; ++i) {
        const fs::path root = library / (i % 2 == 0 ? "HTTPStorages" : "Preferences");
        fs::create_directories(root);
        const std::string number = std::to_string(i);
        const std::string name = i % 5 == 0   ? identifier(i % kApps) + ".helper" + number
                                 : i % 5 == 1 ? "Señor Programa " + number
                                              : "com.somebody.else" + number + ".plist";
        write(root / name, "x");
    }
}

/// A hundred thousand folders, ten in each.
void makeProjects(const fs::path& folder, int depth) {
    fs::create_directories(folder);
    for (int i = 0; depth > 0 && i < 10; ++i)
        makeProjects(folder / ("part " + std::to_string(i)), depth - 1);
}

/// Many small ones, which are one and the same on the disk, and some as large as people have them.
void makePhotographs(const fs::path& pictures) {
    constexpr int different = 5;
    for (int i = 0; i < 5'000; ++i) {
        const fs::path folder = pictures / ("film " + std::to_string(i / 100));
        fs::create_directories(folder);
        const fs::path path = folder / (std::to_string(i) + ".jpg");
        if (i < different) {
            writeJPEG(path, static_cast<unsigned>(i), 1'024, 768);
        } else {
            fs::create_hard_link(pictures / "film 0" / (std::to_string(i % different) + ".jpg"), path);
        }
    }
    writeJPEG(pictures / "large.jpg", 1, 8'000, 6'000);
    writeJPEG(pictures / "large and progressive.jpg", 10, 7'000, 5'000);
    writePNG(pictures / "large.png", 2, 6'000, 4'000);
}

}  // namespace

void makeLargeHome(const fs::path& home) {
    const fs::path whole = home.native() + ".whole";
    if (fs::exists(whole)) return;
    fs::remove_all(home);
    fs::create_directories(home);
    const fs::path library = home / "Library";
    const fs::path support = library / "Application Support";
    makeApps(home);
    makeLeftovers(library);
    makeProjects(home / "Projects", 5);
    makePhotographs(home / "Pictures");
    makeSampleTree(home / "Documents" / "tree", 10'000, 2'000);
    makeFiles(library / "Caches", 200, 100, "cache ", "");
    makeFiles(library / "Logs", 20, 100, "log ", ".log");
    makeFiles(library / "Developer" / "Xcode" / "DerivedData", 20, 1'000, "object ", ".o");
    for (int agent = 0; agent < 2'000; ++agent) {
        fs::create_directories(library / "LaunchAgents");
        write(library / "LaunchAgents" / (std::to_string(agent) + ".plist"),
              propertyList("<key>Label</key><string>agent</string><key>Program</key><string>/missing</string>"));
    }
    makeFiles(library / "Mail" / "V10" / "Attachments", 200, 100, "letter ", ".pdf");
    makeFiles(library / "Messages" / "Attachments", 200, 100, "picture ", ".heic");
    makeFiles(home / "Desktop", 1, 20'000, "Screenshot ", ".png", 100);
    makeFiles(home / "Downloads", 1, 20'000, "installer ", ".dmg", 100);
    makeFiles(support / "Google" / "Chrome" / "Default" / "Cache", 200, 100, "entry ", "");
    makeFiles(support / "MobileSync" / "Backup" / "device", 256, 100, "file ", "");
    write(whole, "");
}

}  // namespace tavrin::benchmarks
