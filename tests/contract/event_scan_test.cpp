// The event scan: the first event of all elements, and the limit on the increment itself.
#include "elements/contract/event_scan.h"

#include <gtest/gtest.h>

#include <string>

#include "fake_types.h"
#include "lattice.h"
#include "model/control.h"
#include "solve/arrays.h"

namespace tidearc::test {
namespace {

/// Springs that soften at a difference of 1: number 3 between nodes 1 and 2, number 8 of group 2 between 2 and 3.
std::string two_groups() {
  return group_card(1, 1, 3) + spring_card(3, 1, 2) + group_card(1, 1, 8) + spring_card(8, 2, 3);
}

class EventScan : public testing::Test {
 protected:
  EventScan() : line_(3, two_groups(), 2) { line_.build(); }
  /// Scans an increment of node 1 along X; node 2, next to the fixed end, stays.
  static void scan(double increment, double limit) {
    equation_vector(arrays.WORK)(1) = increment;
    EVSCAN(arrays.WORK, limit);
  }
  static void expect_found(double EFAC, int IEVT, int IGRP, int IMEM) {
    EXPECT_DOUBLE_EQ(event_found.EFAC, EFAC);
    EXPECT_EQ(event_found.IEVT, IEVT);
    EXPECT_EQ(event_found.IGRP, IGRP);
    EXPECT_EQ(event_found.IMEM, IMEM);
  }

 private:
  Line line_;
};

TEST_F(EventScan, TellsTheElementOfTheFirstEvent) {
  scan(4.0, 0.0);
  expect_found(0.25, 7, 1, 3);
}

TEST_F(EventScan, BeginsAnewEachTime) {
  scan(4.0, 0.0);
  scan(0.5, 0.0);
  expect_found(1.0, 0, 0, 0);
}

TEST_F(EventScan, ALimitCutsALargerIncrement) {
  scan(-0.5, 0.125);
  expect_found(0.25, event_of_limit, 0, 0);
  scan(0.5, 0.5);
  expect_found(1.0, 0, 0, 0);  // not above the limit
}

TEST_F(EventScan, ALimitCountsOnlyBelowTheElementsEvent) {
  scan(4.0, 0.5);
  expect_found(0.125, event_of_limit, 0, 0);
  scan(4.0, 1.0);
  expect_found(0.25, 7, 1, 3);  // equal factors: the element's stays
}

}  // namespace
}  // namespace tidearc::test
