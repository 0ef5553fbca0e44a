#include "sample/water_equations.h"

#include <algorithm>
#include <cmath>

namespace zorvik::sample {
namespace {

constexpr double kGasConstant = 461.526;
constexpr double kRegionEdge = 623.15;  // the end of regions 1 and 2 on the saturation line
constexpr double kContinuedFor = 60.0;  // K of superheated water before the way to steam begins

struct Term {
  int i, j;
  double n;
};

constexpr Term kRegion1[] = {
    {0, -2, 0.14632971213167},        {0, -1, -0.84548187169114},
    {0, 0, -3.7563603672040},         {0, 1, 3.3855169168385},
    {0, 2, -0.95791963387872},        {0, 3, 0.15772038513228},
    {0, 4, -0.16616417199501e-1},     {0, 5, 0.81214629983568e-3},
    {1, -9, 0.28319080123804e-3},     {1, -7, -0.60706301565874e-3},
    {1, -1, -0.18990068218419e-1},    {1, 0, -0.32529748770505e-1},
    {1, 1, -0.21841717175414e-1},     {1, 3, -0.52838357969930e-4},
    {2, -3, -0.47184321073267e-3},    {2, 0, -0.30001780793026e-3},
    {2, 1, 0.47661393906987e-4},      {2, 3, -0.44141845330846e-5},
    {2, 17, -0.72694996297594e-15},   {3, -4, -0.31679644845054e-4},
    {3, 0, -0.28270797985312e-5},     {3, 6, -0.85205128120103e-9},
    {4, -5, -0.22425281908000e-5},    {4, -2, -0.65171222895601e-6},
    {4, 10, -0.14341729937924e-12},   {5, -8, -0.40516996860117e-6},
    {8, -11, -0.12734301741641e-8},   {8, -6, -0.17424871230634e-9},
    {21, -29, -0.68762131295531e-18}, {23, -31, 0.14478307828521e-19},
    {29, -38, 0.26335781662795e-22},  {30, -39, -0.11947622640071e-22},
    {31, -40, 0.18228094581404e-23},  {32, -41, -0.93537087292458e-25},
};
constexpr Term kIdealGas[] = {
    {0, 0, -9.6927686500217},     {0, 1, 10.086655968018},    {0, -5, -0.56087911283020e-2},
    {0, -4, 0.71452738081455e-1}, {0, -3, -0.40710498223928}, {0, -2, 1.4240819171444},
    {0, -1, -4.3839511319450},    {0, 2, -0.28408632460772},  {0, 3, 0.21268463753307e-1},
};
constexpr Term kRegion2[] = {
    {1, 0, -0.17731742473213e-2},   {1, 1, -0.17834862292358e-1},
    {1, 2, -0.45996013696365e-1},   {1, 3, -0.57581259083432e-1},
    {1, 6, -0.50325278727930e-1},   {2, 1, -0.33032641670203e-4},
    {2, 2, -0.18948987516315e-3},   {2, 4, -0.39392777243355e-2},
    {2, 7, -0.43797295650573e-1},   {2, 36, -0.26674547914087e-4},
    {3, 0, 0.20481737692309e-7},    {3, 1, 0.43870667284435e-6},
    {3, 3, -0.32277677238570e-4},   {3, 6, -0.15033924542148e-2},
    {3, 35, -0.40668253562649e-1},  {4, 1, -0.78847309559367e-9},
    {4, 2, 0.12790717852285e-7},    {4, 3, 0.48225372718507e-6},
    {5, 7, 0.22922076337661e-5},    {6, 3, -0.16714766451061e-10},
    {6, 16, -0.21171472321355e-2},  {6, 35, -23.895741934104},
    {7, 0, -0.59059564324270e-17},  {7, 11, -0.12621808899101e-5},
    {7, 25, -0.38946842435739e-1},  {8, 8, 0.11256211360459e-10},
    {8, 36, -8.2311340897998},      {9, 13, 0.19809712802088e-7},
    {10, 4, 0.10406965210174e-18},  {10, 10, -0.10234747095929e-12},
    {10, 14, -0.10018179379511e-8}, {16, 29, -0.80882908646985e-10},
    {16, 50, 0.10693031879409},     {18, 57, -0.33662250574171},
    {20, 20, 0.89185845355421e-24}, {20, 35, 0.30629316876232e-12},
    {20, 48, -0.42002467698208e-5}, {21, 21, -0.59056029685639e-25},
    {22, 53, 0.37826947613457e-5},  {23, 39, -0.12768608934681e-14},
    {24, 26, 0.73087610595061e-28}, {24, 40, 0.55414715350778e-16},
    {24, 58, -0.94369707241210e-6},
};

// The dimensionless Gibbs energy and its derivatives.
struct Gibbs {
  double g = 0, p = 0, pp = 0, t = 0, tt = 0, pt = 0;

  // Adds the terms n x^i y^j; x grows with the pressure when `sign` is 1, falls with it when -1.
  template <class Terms>
  void add(const Terms& terms, double x, double y, int sign) {
    for (const auto& [i, j, n] : terms) {
      const double xi = std::pow(x, i), yj = std::pow(y, j);
      g += n * xi * yj;
      p += sign * n * i * xi / x * yj;
      pp += n * i * (i - 1) * xi / (x * x) * yj;
      t += n * xi * j * yj / y;
      tt += n * xi * j * (j - 1) * yj / (y * y);
      pt += sign * n * i * xi / x * j * yj / y;
    }
  }
};

WaterState state_of(const Gibbs& f, double pressure, double temperature, double pi, double tau) {
  const double rt = kGasConstant * temperature;
  const double v = rt / pressure * pi * f.p;
  const double mixed = f.p - tau * f.pt;
  const double vt = kGasConstant * pi / pressure * mixed;
  const double vp = rt * f.pp * (pi / pressure) * (pi / pressure);
  const double enthalpy = rt * tau * f.t;
  WaterState state;
  state[kEntropy] = kGasConstant * (tau * f.t - f.g);
  state[kEnthalpy] = enthalpy;
  state[kDensity] = 1 / v;
  state[kCompressibility] = pi * f.p;
  state[kSoundSpeed] = std::sqrt(rt * f.p * f.p / (mixed * mixed / (tau * tau * f.tt) - f.pp));
  state[kEnergy] = enthalpy - pressure * v;
  state[kIsobaricHeat] = -kGasConstant * tau * tau * f.tt;
  state[kIsochoricHeat] = state[kIsobaricHeat] + kGasConstant * mixed * mixed / f.pp;
  state[kEnthalpyOverP] = v - temperature * vt;
  state[kExpansion] = vt / v;
  state[kDensityOverT] = -vt / (v * v);
  state[kDensityOverP] = -vp / (v * v);
  return state;
}

// The temperature at the boundary between region 2 and the critical region.
double boundary_temperature(double pressure) {
  return 572.54459862746 + std::sqrt((pressure / 1e6 - 13.918839778870) / 0.10192970039326e-2);
}

// a + b * (factor), quantity by quantity.
WaterState sum(const WaterState& a, const WaterState& b, double factor) {
  WaterState result;
  for (std::size_t k = 0; k < a.size(); ++k) result[k] = a[k] + factor * b[k];
  return result;
}

template <class Function>
WaterState slope(Function f, double temperature, double step) {
  const WaterState difference = sum(f(temperature + step), f(temperature), -1);
  return sum(WaterState{}, difference, 1 / step);
}

// From the regions' edge on: value and slope there, the critical values at the critical point;
// quantities that have none keep their value at the edge.
template <class Function>
WaterState near_critical(Function saturated, double temperature) {
  const WaterState edge = saturated(kRegionEdge), along = slope(saturated, kRegionEdge, -0.01);
  WaterState critical = edge;
  critical[kEntropy] = 4412.0;
  critical[kEnthalpy] = 2.0875469e6;
  critical[kDensity] = 322.0;
  critical[kEnergy] = critical[kEnthalpy] - kCriticalPressure / 322.0;
  const double at_edge = 1 - kRegionEdge / kCriticalTemperature;
  const double distance = (1 - temperature / kCriticalTemperature) / at_edge;  // 1 .. 0
  constexpr double kExponent = 0.35;
  WaterState state = edge;
  for (const int k : {kEntropy, kEnthalpy, kDensity, kEnergy}) {
    const auto q = static_cast<std::size_t>(k);
    const double total = edge[q] - critical[q];
    const double linear_slope = -kCriticalTemperature * along[q] * at_edge;
    const double power_part = (total - linear_slope) / (1 - kExponent);
    state[q] =
        critical[q] + power_part * std::pow(distance, kExponent) + (total - power_part) * distance;
  }
  return state;
}

// The parabola through `from` with the slope there and through `to`, at a fraction of the way.
WaterState parabola(const WaterState& from, const WaterState& along, const WaterState& to,
                    double way, double fraction) {
  const WaterState line = sum(from, along, way);
  return sum(sum(from, along, way * fraction), sum(to, line, -1), fraction * fraction);
}

WaterState above_critical_pressure(double pressure, double temperature) {
  const double hot = boundary_temperature(pressure);
  if (temperature <= kRegionEdge) return region1(pressure, temperature);
  if (temperature >= hot) return region2(pressure, temperature);
  const WaterState a = region1(pressure, kRegionEdge), b = region2(pressure, hot);
  const double way = hot - kRegionEdge, x = (temperature - kRegionEdge) / way;
  const WaterState at_a = slope([&](double t) { return region1(pressure, t); }, kRegionEdge, -0.01);
  const WaterState at_b = slope([&](double t) { return region2(pressure, t); }, hot, 0.01);
  WaterState state = sum(a, sum(b, a, -1), x * x * (3 - 2 * x));
  state = sum(state, at_a, way * x * (1 - x) * (1 - x));
  return sum(state, at_b, -way * x * x * (1 - x));
}

// One phase at and on its own side of the saturation temperature.
WaterState proper_water(double pressure, double saturation, double temperature) {
  if (temperature <= kRegionEdge) return region1(pressure, temperature);
  const auto line = [&](double t) { return region1(pressure, t); };
  return parabola(line(kRegionEdge), slope(line, kRegionEdge, -0.01), saturated_water(saturation),
                  saturation - kRegionEdge,
                  (temperature - kRegionEdge) / (saturation - kRegionEdge));
}

WaterState proper_steam(double pressure, double saturation, double temperature) {
  if (saturation <= kRegionEdge) return region2(pressure, temperature);
  const double edge = boundary_temperature(pressure);
  if (temperature >= edge) return region2(pressure, temperature);
  const auto line = [&](double t) { return region2(pressure, t); };
  return parabola(line(edge), slope(line, edge, 0.01), saturated_steam(saturation),
                  saturation - edge, (temperature - edge) / (saturation - edge));
}

}  // namespace

WaterState region1(double pressure, double temperature) {
  const double pi = pressure / 16.53e6, tau = 1386.0 / temperature;
  Gibbs gibbs;
  gibbs.add(kRegion1, 7.1 - pi, tau - 1.222, -1);
  return state_of(gibbs, pressure, temperature, pi, tau);
}

WaterState region2(double pressure, double temperature) {
  const double pi = pressure / 1e6, tau = 540.0 / temperature;
  Gibbs gibbs;
  gibbs.add(kIdealGas, 1.0, tau, 1);
  gibbs.g += std::log(pi);
  gibbs.p = 1 / pi;
  gibbs.pp = -1 / (pi * pi);
  gibbs.add(kRegion2, pi, tau - 0.5, 1);
  return state_of(gibbs, pressure, temperature, pi, tau);
}

double saturation_pressure(double temperature) {
  const double x = temperature - 0.23855557567849 / (temperature - 650.17534844798);
  const double a = x * x + 1167.0521452767 * x - 724213.16703206;
  const double b = -17.073846940092 * x * x + 12020.824702470 * x - 3232555.0322333;
  const double c = 14.915108613530 * x * x - 4823.2657361591 * x + 405113.40542057;
  return 1e6 * std::pow(2 * c / (-b + std::sqrt(b * b - 4 * a * c)), 4);
}

double saturation_temperature_at(double pressure) {
  const double x = std::pow(pressure / 1e6, 0.25);
  const double e = x * x - 17.073846940092 * x + 14.915108613530;
  const double f = 1167.0521452767 * x * x + 12020.824702470 * x - 4823.2657361591;
  const double g = -724213.16703206 * x * x - 3232555.0322333 * x + 405113.40542057;
  const double d = 2 * g / (-f - std::sqrt(f * f - 4 * e * g));
  const double s = 650.17534844798 + d;
  return (s - std::sqrt(s * s - 4 * (-0.23855557567849 + 650.17534844798 * d))) / 2;
}

WaterState saturated_water(double temperature) {
  const auto line = [](double t) { return region1(saturation_pressure(t), t); };
  return temperature <= kRegionEdge ? line(temperature) : near_critical(line, temperature);
}

WaterState saturated_steam(double temperature) {
  const auto line = [](double t) { return region2(saturation_pressure(t), t); };
  return temperature <= kRegionEdge ? line(temperature) : near_critical(line, temperature);
}

double surface_tension(double temperature) {
  const double distance = std::max(0.0, 1 - temperature / kCriticalTemperature);
  return 235.8e-3 * std::pow(distance, 1.256) * (1 - 0.625 * distance);
}

WaterState water_at(double pressure, double temperature) {
  if (pressure >= kCriticalPressure) return above_critical_pressure(pressure, temperature);
  const double saturation = saturation_temperature_at(pressure);
  const auto line = [&](double t) { return proper_water(pressure, saturation, t); };
  if (temperature <= saturation) return line(temperature);
  const WaterState along = slope(line, saturation, -0.01);
  const double beyond = temperature - saturation;
  const WaterState straight = sum(line(saturation), along, std::min(beyond, kContinuedFor));
  if (beyond <= kContinuedFor) return straight;
  const double fraction = (beyond - kContinuedFor) / (kHottest - saturation - kContinuedFor);
  return sum(straight, sum(region2(pressure, kHottest), straight, -1), fraction);
}

WaterState steam_at(double pressure, double temperature) {
  if (pressure >= kCriticalPressure) return above_critical_pressure(pressure, temperature);
  const double saturation = saturation_temperature_at(pressure);
  const auto line = [&](double t) { return proper_steam(pressure, saturation, t); };
  if (temperature >= saturation) return line(temperature);
  return sum(line(saturation), slope(line, saturation, 0.01), temperature - saturation);
}

}  // namespace zorvik::sample
