#include "projection.h"

#include <cmath>

namespace projection {
namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kSemiMajor = 6378137.0;             // WGS84 a
constexpr double kFlattening = 1.0 / 298.257223563;  // WGS84 f
constexpr double kScale = 0.9996;                    // UTM k0
constexpr double kFalseEasting = 500000.0;

double Radians(double degrees) { return degrees * kPi / 180.0; }

// Meridian arc length from the equator to latitude phi (radians).
double MeridianArc(double phi, double e2) {
  double const e4 = e2 * e2;
  double const e6 = e4 * e2;
  return kSemiMajor * ((1 - e2 / 4 - 3 * e4 / 64 - 5 * e6 / 256) * phi -
                       (3 * e2 / 8 + 3 * e4 / 32 + 45 * e6 / 1024) * std::sin(2 * phi) +
                       (15 * e4 / 256 + 45 * e6 / 1024) * std::sin(4 * phi) -
                       (35 * e6 / 3072) * std::sin(6 * phi));
}

}  // namespace

void LonLatToUtm(double lon, double lat, double* easting, double* northing, void* context) {
  UtmZone const& zone = *static_cast<UtmZone const*>(context);
  double const e2 = kFlattening * (2 - kFlattening);
  double const ep2 = e2 / (1 - e2);
  double const phi = Radians(lat);
  double const lambda0 = Radians(zone.number * 6.0 - 183.0);

  double const sinPhi = std::sin(phi);
  double const cosPhi = std::cos(phi);
  double const tanPhi = std::tan(phi);
  double const n = kSemiMajor / std::sqrt(1 - e2 * sinPhi * sinPhi);
  double const t = tanPhi * tanPhi;
  double const c = ep2 * cosPhi * cosPhi;
  double const a = cosPhi * (Radians(lon) - lambda0);
  double const a2 = a * a;

  *easting = kFalseEasting + kScale * n *
                                 (a + (1 - t + c) * a2 * a / 6 +
                                  (5 - 18 * t + t * t + 72 * c - 58 * ep2) * a2 * a2 * a / 120);
  *northing = kScale * (MeridianArc(phi, e2) +
                        n * tanPhi *
                            (a2 / 2 + (5 - t + 9 * c + 4 * c * c) * a2 * a2 / 24 +
                             (61 - 58 * t + t * t + 600 * c - 330 * ep2) * a2 * a2 * a2 / 720));
}

}  // namespace projection
