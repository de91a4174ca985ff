#include "platform/qt/ProgramStart.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cerrno>
#include <filesystem>

#include "base/Fault.h"
#include "support/TemporaryFolder.h"
#include "support/TextFile.h"
#include "support/WaitUntil.h"

namespace kelvara::test {
namespace {

TEST(ProgramStart, StartsAnIndependentProgramWithAnyPath) {
  const TemporaryFolder folder;
  const std::string program = folder.PathOf("a program");
  WriteTextFile(program, "#!/bin/sh\nprintf %s \"$1\" >\"$0.new\"; mv \"$0.new\" \"$0.told\"\n");
  std::filesystem::permissions(program, std::filesystem::perms::owner_all);
  const std::string path = "/caf\xE9 \"x\"/one $HOME.trace";
  qt::StartProgram(program, path);
  ASSERT_TRUE(WaitUntil([&] { return std::filesystem::exists(program + ".told"); },
                        std::chrono::seconds(10)));
  EXPECT_EQ(ReadTextFile(program + ".told"), path);
  EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1);
  EXPECT_EQ(errno, ECHILD);
}

TEST(ProgramStart, AProgramThatCannotBeStartedIsAFault) {
  const TemporaryFolder folder;
  const std::string program = folder.PathOf("missing");
  try {
    qt::StartProgram(program, "a");
    FAIL();
  } catch (const base::Fault& fault) {
    EXPECT_EQ(fault.what(), "cannot start \"" + program + "\": No such file or directory");
  }
}

}  // namespace
}  // namespace kelvara::test
