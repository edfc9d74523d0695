#include "player/external_players.h"

#include <gtest/gtest.h>

namespace tunovka {
namespace {

TEST(ExternalCommandLines, areMadeToTheLetter) {
    EXPECT_EQ(winampProgram(L"C:\\Program Files\\Winamp"),
              L"C:\\Program Files\\Winamp\\winamp.exe");
    EXPECT_EQ(winampProgram(L""), L"");
    EXPECT_EQ(playingCommandLine(L"C:\\Program Files\\p.exe", L"E:\\a b.mp3"),
              L"C:\\Program Files\\p.exe \"E:\\a b.mp3\"");
    EXPECT_EQ(openWithCommandLine(L"E:\\a b.mp3"),
              L"rundll32.exe shell32.dll, OpenAs_RunDLL E:\\a b.mp3");
}

}  // namespace
}  // namespace tunovka
