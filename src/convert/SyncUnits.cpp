#include "convert/SyncUnits.h"

#include "base/CheckedInteger.h"
#include "base/Rounding.h"

namespace kelvara::convert {
namespace {

constexpr int kMetresPerRfpsUnit = 29;
constexpr std::int16_t kMetresPerAaSyncUnit = 130;
constexpr double kMicrosecondsPerRfpsUnit = 0.09645;
constexpr double kLengthOffsetMetres = 1.6;
constexpr double kOhmsPerMetre = 0.094;
constexpr int kConductors = 2;

std::int16_t AaSyncOf(double metres) { return base::Round16(metres / kMetresPerAaSyncUnit); }

double OhmsOf(double metres) {
  return (metres + kLengthOffsetMetres) * kOhmsPerMetre * kConductors;
}

double DelayOf(double rfps) { return rfps * kMicrosecondsPerRfpsUnit; }

}  // namespace

SyncUnits FromRfps(double rfps) {
  const double metres = rfps * kMetresPerRfpsUnit;
  return {rfps, AaSyncOf(metres), metres, OhmsOf(metres), DelayOf(rfps)};
}

SyncUnits FromAaSync(double aaSync) {
  const std::int16_t units = base::Round16(aaSync);
  const double metres = base::Multiply16(units, kMetresPerAaSyncUnit);
  const double rfps = metres / kMetresPerRfpsUnit;
  return {rfps, units, metres, OhmsOf(metres), DelayOf(rfps)};
}

SyncUnits FromMetres(double metres) {
  const double rfps = metres / kMetresPerRfpsUnit;
  return {rfps, AaSyncOf(metres), metres, OhmsOf(metres), DelayOf(rfps)};
}

SyncUnits FromOhms(double ohms) {
  const double metres = ohms / kConductors / kOhmsPerMetre - kLengthOffsetMetres;
  const double rfps = metres / kMetresPerRfpsUnit;
  return {rfps, AaSyncOf(metres), metres, ohms, DelayOf(rfps)};
}

SyncUnits FromDelay(double delay) {
  const double rfps = delay / kMicrosecondsPerRfpsUnit;
  const double metres = rfps * kMetresPerRfpsUnit;
  return {rfps, AaSyncOf(metres), metres, OhmsOf(metres), delay};
}

}  // namespace kelvara::convert
