#include "results/record_plan.h"

#include <gtest/gtest.h>

#include <fstream>

#include "results/results_variables.h"
#include "sample/results_file.h"
#include "stores/keys.h"
#include "stores/results_store.h"
#include "support/run_directory.h"

namespace zorvik {
namespace {

// 130 records of A (1 value), B (3,000) and C (2); value k of record r is 10,000 * r + k, k = 0
// being the problem time.
constexpr int kRecords = 130, kB = 3000, kValues = 1 + 1 + kB + 2;

sample::ResultsFile sparse_file() {
  sample::ResultsFile file{};
  file.standard_values = kValues;
  file.entries = {{"A", 1, 1, 1, 1, 1001},
                  {"B(1:3000)", 1, kB, 1, 1, 1000 * kB + 1},
                  {"C(1:2)", 1, 2, 1, 1, 2001}};
  for (int r = 1; r <= kRecords; ++r) {
    std::vector<double>& record = file.records.emplace_back();
    for (int k = 0; k < kValues; ++k) record.push_back(10000.0 * r + k);
  }
  return file;
}

class RecordPlanTest : public ::testing::Test {
 protected:
  RecordPlanTest() {
    std::ofstream(directory_.path("vnxres"), std::ios::binary)
        << sample::results_file_bytes(sparse_file());
    file_.open_to_read(directory_.path("vnxres"));
    reset_results_store();
    EXPECT_EQ(read_header(file_, header_), HeaderStatus::kOk);
    EXPECT_EQ(build_entry_table(header_), HeaderStatus::kOk);
    EXPECT_EQ(form_results_variables(), HeaderStatus::kOk);
  }

  void plan_for(std::initializer_list<const char*> names) {
    for (const char* name : names) variable(name).named = true;
    plan_records(plan_, header_, file_.position(), kRecords, true);
  }
  ResultsVariable& variable(const char* name) {
    return results_variables.variable[find_results_variable(name)];
  }
  double& value(const char* name, int k) {
    return results_store.value[results_store.descriptor[variable(name).descriptor].start + k - 1];
  }

  support::RunDirectory directory_;
  File file_;
  static inline ResultsHeader header_;
  RecordPlan plan_;
};

TEST_F(RecordPlanTest, WhatLiesApartIsReadApart) {
  plan_for({"A", "C"});
  EXPECT_EQ(plan_.spans.size(), 2u);
  EXPECT_FALSE(plan_.reads_ahead);
  value("B", 1) = -1.0;
  for (int r = 1; r <= kRecords; ++r) {
    ASSERT_EQ(load_record(file_, plan_, r), ReadStatus::kOk);
    ASSERT_EQ(value("A", 1), 10000.0 * r + 1);
    ASSERT_EQ(value("C", 2), 10000.0 * r + kValues - 1);
  }
  EXPECT_EQ(value("B", 1), -1.0);
  EXPECT_EQ(load_record(file_, plan_, kRecords + 1), ReadStatus::kEnd);
}

TEST_F(RecordPlanTest, WhatLiesCloseIsReadAtOnce) {
  plan_for({"A", "B"});
  EXPECT_EQ(plan_.spans.size(), 1u);
  EXPECT_TRUE(plan_.reads_ahead);
  for (int r = 1; r <= kRecords; ++r) {
    ASSERT_EQ(load_record(file_, plan_, r), ReadStatus::kOk);
    ASSERT_EQ(value("B", kB), 10000.0 * r + kB + 1);
  }
}

// A problem time that no one names is brought up to date now and then, one that is named always.
TEST_F(RecordPlanTest, ProblemTime) {
  plan_for({"C"});
  for (int r = 1; r <= 70; ++r) ASSERT_EQ(load_record(file_, plan_, r), ReadStatus::kOk);
  EXPECT_EQ(main_key_value(kTau), 10000.0 * 65);
  EXPECT_EQ(load_time(file_, plan_, 70), ReadStatus::kOk);
  EXPECT_EQ(main_key_value(kTau), 10000.0 * 70);
  results_variables.time_named = true;
  plan_for({"C"});
  ASSERT_EQ(load_record(file_, plan_, 71), ReadStatus::kOk);
  EXPECT_EQ(main_key_value(kTau), 10000.0 * 71);
}

}  // namespace
}  // namespace zorvik
