// The steps in which an object image is loaded, to tell whether a load that failed has left exactly what was read.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include <ondrel/MMCObjectSet.h>

#include "faults/outcome.h"

namespace ondrel::test {

class ImageSteps {
 public:
  /// Of the image that a set is stored as. The set's files on disk must have lower cookies than those in memory, in the
  /// order of their paths.
  explicit ImageSteps(CMMCObjectSet& stored);

  const std::string& Image() const { return m_image; }

  /// A set to load into, which holds something else and is modified.
  static std::unique_ptr<CMMCObjectSet> MakeOldSet();

  /// How far a load into such a set came: 0 when it did not touch the set, 1 when it emptied it, then one more for each
  /// node, dialog and file. -1 when the set is in no such state: it holds something else, or by halves.
  int StepOf(CMMCObjectSet& set) const;
  int LastStep() const { return static_cast<int>(m_states.size()) - 1; }

 private:
  std::string m_image;
  std::vector<std::string> m_states;  ///< What is observed in the set after each step.
};

/// Judges one load after the other, each with a later fault.
class ImageLoads {
 public:
  explicit ImageLoads(const ImageSteps& steps) : m_steps(steps) {}

  /// The load's set must be at a step, none before that of the load before, at the last one when the load has succeeded
  /// and at the first one when it has met the first of all faults; it must be of use for another load.
  void ExpectStep(CMMCObjectSet& set, const Outcome& outcome);

 private:
  const ImageSteps& m_steps;
  int m_step = 0;
  bool m_isFirst = true;
};

}  // namespace ondrel::test
