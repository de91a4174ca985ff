#include "ports/PortDeviceWindows.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <process.h>

#include <array>

#include "ports/windows/BeltpackPort.h"

namespace kelvara::test {
namespace {

using ports::FindingOfError;
using ports::FollowLinks;
using ports::LookAt;
using ports::PortState;

class PortDeviceTest : public BeltpackPortTest {
 protected:
  std::string CannotOpen() const { return "cannot open \"" + com_ + "\": "; }
};

TEST_F(PortDeviceTest, AFreePortIsFoundByEachOfItsNames) {
  for (const std::string& name : {com_, "\\\\.\\" + com_, "\\\\?\\" + com_}) {
    EXPECT_EQ(FollowLinks(name), com_);
    EXPECT_EQ(LookAt(name).state, PortState::Free) << name;
  }
  EXPECT_EQ(FollowLinks("\\\\.\\com10"), "COM10");
  EXPECT_EQ(port_.Describe(1), com_ + ": ready to be opened.");
}

TEST_F(PortDeviceTest, WhatTheSystemDoesNotKnowIsAbsent) {
  for (const char* name : {"COM99", "", "no such device", "C:\\no such folder\\COM1"}) {
    EXPECT_EQ(LookAt(name).state, PortState::Absent) << name;
  }
  table_.Assign({2, "COM99"});
  port_.SetPortNumber(2);
  EXPECT_EQ(FaultOfOpening(port_), "cannot open \"COM99\": there is no such device");
  EXPECT_EQ(port_.Describe(2),
            "COM99: there is no such device. Plug the adapter in, or choose another port.");
}

TEST_F(PortDeviceTest, WhatIsNoPortIsDetectedOnOpening) {
  table_.Assign({2, "NUL"});
  port_.SetPortNumber(2);
  EXPECT_EQ(FaultOfOpening(port_), "cannot open \"NUL\": it is not a serial port");
  EXPECT_EQ(port_.Describe(2), "NUL: it is not a serial port. Choose another port.");
}

TEST_F(PortDeviceTest, ReportsThatThisProgramHasThePortOpen) {
  Open();
  EXPECT_EQ(LookAt(com_).state, PortState::HeldHere);
  EXPECT_EQ(port_.Describe(1), com_ + ": open now, in this program.");
  table_.Assign({2, "\\\\.\\" + com_});
  ports::QtSerialPort second(table_);
  second.SetPortNumber(2);
  EXPECT_EQ(FaultOfOpening(second),
            "cannot open \"\\\\.\\" + com_ + "\": this program has it open");
  EXPECT_TRUE(port_.HasDevice());
  port_.SetOpen(false);
  EXPECT_EQ(LookAt(com_).state, PortState::Free);
  EXPECT_EQ(FaultOfOpening(second), "");
}

/// Runs this test again in a second process, which is told who holds the port.
TEST_F(PortDeviceTest, ASecondProgramLearnsWhichOneHasThePort) {
  constexpr const char* kHolder = "KELVARA_TEST_HOLDER";
  std::array<char, MAX_PATH> program{};
  ::GetModuleFileNameA(nullptr, program.data(), MAX_PATH);
  if (const std::string holder = FromEnvironment(kHolder); !holder.empty()) {
    const std::string path = program.data();
    const std::string reason = "in use by another program (" +
                               path.substr(path.find_last_of('\\') + 1) + ", process " + holder +
                               ")";
    EXPECT_EQ(LookAt(com_).reason, reason);
    EXPECT_EQ(FaultOfOpening(port_), CannotOpen() + reason);
    return;
  }
  Open();
  ASSERT_TRUE(ReadsReport());
  ::_putenv_s(kHolder, std::to_string(::GetCurrentProcessId()).c_str());
  const auto* const test = testing::UnitTest::GetInstance()->current_test_info();
  const std::string filter =
      std::string("--gtest_filter=") + test->test_suite_name() + "." + test->name();
  EXPECT_EQ(::_spawnl(_P_WAIT, program.data(), "ports_tests", filter.c_str(), nullptr), 0);
  ::_putenv_s(kHolder, "");
  EXPECT_TRUE(ReadsReport());
}

TEST(PortErrorTest, TheErrorsOfOpeningAreToldApart) {
  const auto reason = [](DWORD error) { return FindingOfError(error, "COM1").reason; };
  for (const DWORD error : {ERROR_FILE_NOT_FOUND, ERROR_DEVICE_NOT_CONNECTED}) {
    EXPECT_EQ(reason(error), "there is no such device") << error;
  }
  for (const DWORD error : {ERROR_ACCESS_DENIED, ERROR_SHARING_VIOLATION}) {
    EXPECT_EQ(reason(error), "in use by another program") << error;
  }
  EXPECT_EQ(reason(ERROR_INVALID_FUNCTION), "it is not a serial port");
  const ports::PortFinding other = FindingOfError(ERROR_GEN_FAILURE, "COM1");
  EXPECT_EQ(other.state, PortState::Dead);
  EXPECT_EQ(other.reason, ports::TextOfError(ERROR_GEN_FAILURE));
  EXPECT_NE(other.reason, ports::TextOfError(ERROR_CRC));
  EXPECT_THAT(other.reason, testing::Not(testing::EndsWith(".")));
}

}  // namespace
}  // namespace kelvara::test
