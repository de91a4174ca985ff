#include "app/OptionTable.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>

#include "support/Faults.h"

namespace kelvara::app {
namespace {

std::set<std::string> ChosenEntries(const Options& options) {
  std::set<std::string> chosen;
  for (const OptionEntry& entry : OptionEntries()) {
    if (entry.isChosen(options)) {
      chosen.insert(entry.name);
    }
  }
  return chosen;
}

TEST(OptionTable, StartsWithTheEntriesCheckedBeforeTheStoredOptionsApply) {
  const std::set<std::string> expected{"mnuDisplayLogOff", "mnuDispRFPS", "mnuRpnDecimal",
                                       "mnuFpsOn", "mnuViewDebugOff"};
  EXPECT_EQ(ChosenEntries(FirstOptions()), expected);
  for (const OptionEntry& entry : OptionEntries()) {
    EXPECT_EQ(entry.checkedAtFirst, expected.count(entry.name) > 0) << entry.name;
  }
}

TEST(OptionTable, ChoosingAnEntryChangesOnlyItsGroup) {
  for (const OptionEntry& entry : OptionEntries()) {
    SCOPED_TRACE(entry.name);
    std::set<std::string> expected = ChosenEntries(FirstOptions());
    for (const OptionEntry& other : OptionEntries()) {
      if (std::string(other.group) == entry.group) {
        expected.erase(other.name);
      }
    }
    expected.insert(entry.name);
    Options options = FirstOptions();
    entry.choose(options);
    EXPECT_EQ(ChosenEntries(options), expected);
  }
}

TEST(OptionTable, TheUnitsMayHaveNoEntryChosen) {
  Options options;
  options.units.reset();
  for (const char* const name : {"mnuDispRFPS", "mnuDispSync", "mnuDispMetres"}) {
    EXPECT_FALSE(OptionEntryNamed(name).isChosen(options)) << name;
  }
}

TEST(OptionTable, AnUnknownNameIsASubscriptFault) {
  EXPECT_EQ(test::FaultOf([] { OptionEntryNamed("mnuExit"); }), base::FaultKind::Subscript);
}

}  // namespace
}  // namespace kelvara::app
