#include "Support/TestFolder.h"
#include "TavrinCore/Platform/ScreenCapture.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace tavrin {
namespace {

using test::ScopedVariable;
using test::TestFolder;

/// A home whose user set nothing.
class ScreenCaptureLocation : public testing::Test {
  protected:
    TestFolder home_;
    ScopedVariable homeVariable_{"HOME", home_.path().c_str()};
    ScopedVariable settingsVariable_{"XDG_CONFIG_HOME", nullptr};

    void set(std::string_view file, std::string_view contents) const {
        home_.file(std::string(".config/").append(file), contents);
    }
};

TEST_F(ScreenCaptureLocation, isNilWhereNothingIsSet) {
    EXPECT_EQ(screenCaptureLocation(), std::nullopt);
    set("spectaclerc", "[General]\nautoSaveImage=true\n\n[ImageSave]\nlastImageSaveLocation=file:///tmp/x.png\n");
    set("xfce4/xfce4-screenshooter", "delay=0\nscreenshot_dir=\n");
    EXPECT_EQ(screenCaptureLocation(), std::nullopt);
}

TEST_F(ScreenCaptureLocation, isWhatTheDesktopsProgramsWrite) {
    set("xfce4/xfce4-screenshooter", "delay=0\nscreenshot_dir=file:///home/ana/Im%C3%A1genes\naction=1\n");
    EXPECT_EQ(screenCaptureLocation(), "/home/ana/Im\u00e1genes");
    set("spectaclerc", "[Save]\ndefaultSaveLocation=file:///home/ana/Shots/\n");
    EXPECT_EQ(screenCaptureLocation(), "/home/ana/Shots");
    set("spectaclerc",
        "[Save]\ndefaultSaveLocation=file:///old\n\n[ImageSave]\nimageSaveLocation=file:///new\n[VideoSave]\n"
        "imageSaveLocation=file:///video\n");
    EXPECT_EQ(screenCaptureLocation(), "/new");
}

TEST_F(ScreenCaptureLocation, theHomeMayBeNamedByItsVariable) {
    for (const char* value : {"imageSaveLocation[$e]=file://$HOME/Shots", "imageSaveLocation[$e]=$HOME/Shots",
                              "imageSaveLocation=~/Shots"}) {
        set("spectaclerc", std::string("[ImageSave]\n") + value);
        EXPECT_EQ(screenCaptureLocation(), "~/Shots") << value;
    }
}

TEST_F(ScreenCaptureLocation, aFolderThatIsNotOnThisMachineIsNone) {
    for (const char* value :
         {"sftp://host/shots", "file://host/shots", "shots", "file:///a%2", "", "~ana/shots", "$HOMEX/shots"}) {
        set("spectaclerc", std::string("[ImageSave]\nimageSaveLocation=") + value + "\n");
        EXPECT_EQ(screenCaptureLocation(), std::nullopt) << value;
    }
}

TEST_F(ScreenCaptureLocation, settingsMayLieElsewhere) {
    home_.file("settings/spectaclerc", "[ImageSave]\nimageSaveLocation=/shots\n");
    const ScopedVariable settings("XDG_CONFIG_HOME", (home_ / "settings").path().c_str());
    EXPECT_EQ(screenCaptureLocation(), "/shots");
}

TEST_F(ScreenCaptureLocation, aFifoInPlaceOfTheSettingsHoldsNobodyUp) {
    home_.folder(".config");
    test::makeFifo(home_ / ".config/spectaclerc");
    EXPECT_EQ(screenCaptureLocation(), std::nullopt);
}

TEST_F(ScreenCaptureLocation, aURLBelowTheHomeIsPercentEncodedAndAPathIsNot) {
    set("spectaclerc", "[ImageSave]\nimageSaveLocation[$e]=file://$HOME/Im%C3%A1genes%20de%20hoy\n");
    EXPECT_EQ(screenCaptureLocation(), "~/Im\u00e1genes de hoy");
    set("spectaclerc", "[ImageSave]\nimageSaveLocation[$e]=$HOME/100%25\n");
    EXPECT_EQ(screenCaptureLocation(), "~/100%25");
    set("spectaclerc", "[ImageSave]\nimageSaveLocation[$e]=file://$HOME/a%2\n");
    EXPECT_EQ(screenCaptureLocation(), std::nullopt) << "a broken escape";
}

}  // namespace
}  // namespace tavrin
