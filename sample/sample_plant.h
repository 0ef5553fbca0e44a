// The sample plant: the files of a small break in a pressurised water plant, made of closed
// formulas so that every result of a program can be worked out by hand.
//
// vnxres has 31 records at TAU = 0, 2, 4 .. 60 s. The break opens at 10 s; below, t is TAU, s the
// seconds since the break opened, u those since the accumulators began to inject (at 37.5 s):
//   s = max(0, t - 10)    u = max(0, s - 27.5)    p = 1.55E7 - 2.0E5 * s   (Pa; 5.5E6 at 60 s)
// Elements k (cells N): CH 1 (20), 2 (12), 3 (600); HCS 1 (20), 2 (2500); COL 1, 2; no SCH;
// SLVES 1 (4), 2 (4); TANK 1 (6), 2 (3); ACCUM 1 to 4. Phase 1 is liquid, phase 2 is steam.
//   DT                0.125 s
//   P.CHk(j)          p - 1.0E4 * k + 100 * (N - j)                 Pa
//   T.CHk(1,j)        560 + j / 8 - s / 2;  T.CHk(2,j) is 20 more   K
//   VOID.CHk(j)       s / 64 * (1 - j / 1024)
//   G.CHk(1,j)        4000 - 50 * s + j;    G.CHk(2,j) = 8 * s      kg/s
//   DM.CHk(1,j)       100 - s;              DM.CHk(2,j) = s / 4     kg
//   TW.HCSk(1,j)      600 + j + 20 * h;     TW.HCSk(2,j) is 15 less K; h = max(0, min(t-20, 44-t)),
//                                           so the walls are hottest at 32 s, when h = 12
//   QW.HCSk(i,j)      1.0E6 - 1.0E4 * s + 1000 * i + j              W
//   P.COLk = p + 1.0E4 * k;  T.COLk(i) = 580 + 20 * i;  VOID.COLk = s / 64;
//   DM.COLk(1) = 2000 - 10 * s;  DM.COLk(2) = 4 * s
//   P.SLVESk = 6.0E6 + 1.0E5 * k + 1.0E4 * s;  Q.SLVESk(i) = 1000 * i;  VOIDP.SLVESk(j) = j / 8;
//   PP.SLVESk(j) = P.SLVESk + 100 * j;  GEN.SLVESk = 400 - 8 * s;  M.SLVESk(i) = 5000 * i
//   PA.TANKk = 1.0E5 * k;  PV.TANKk = 2.0E4 * k;  TENV.TANKk = 300 + k;  VOIDP.TANKk(j) = j / 8;
//   PP.TANKk(j) = 1.0E5 * j;  GEN.TANKk = s;  GVM.TANKk = s / 2;  M.TANKk(1) = 1000 + 20 * s;
//   M.TANKk(2) = 10
//   P.ACCUMk = 1.0E7 - 2.0E5 * u;  TF 320;  TG 325;  TW 322;  PW = P.ACCUMk + 1000 * k;  MG 50;
//   MF = 30000 - 200 * u
// Listed entries:
//   POWER             3.0E9, and 1.875E8 from 14 s on               W
//   VALVE(i), i <= 4  integer: 1 from 10 * i s on, else 0
//   FLUX(i,j)         100 * i + 10 * j + t; 2 by 6, stored in two pieces of three columns each
//
// vnxsav has three records at 20, 40 and 60 s, each with the events BREAK and SCRAM and the state
// t, s, p. nwsp_dat holds the tables of property_file.h. Variants, each a results file but the
// last:
//   run1              the records up to 40 s
//   run2              the records from 30 s on: a restart of run1
//   variant           a smaller break: p = 1.55E7 - 1.5E5 * s
//   cut_results       run1 and 1000 bytes of its next record
//   cut_savings       vnxsav without its last 10 bytes
#ifndef ZORVIK_SAMPLE_SAMPLE_PLANT_H_
#define ZORVIK_SAMPLE_SAMPLE_PLANT_H_

#include <string>
#include <string_view>
#include <vector>

#include "sample/results_file.h"
#include "sample/save_file.h"

namespace zorvik::sample {

inline constexpr double kFall = 2.0e5;  // of the pressure, Pa/s

// The records from number `first` to `last`, counted from 0.
ResultsFile sample_results(int first = 0, int last = 30, double fall = kFall);
SaveFile sample_savings();

// The files of the sample plant by name, the plain ones first; the one place that lists them.
struct SampleFile {
  const char* name;
  std::string (*bytes)();
};
inline constexpr std::size_t kPlainFiles = 3;
const std::vector<SampleFile>& sample_files();

}  // namespace zorvik::sample

#endif  // ZORVIK_SAMPLE_SAMPLE_PLANT_H_
