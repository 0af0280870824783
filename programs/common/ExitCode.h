#pragma once

namespace sentrel::programs {

/// What every program of the project ends with.
enum ExitCode : int {
  exitDone = 0,      ///< done, or the answer is yes
  exitNo = 1,        ///< the answer is no, or a check found faults
  exitUsage = 2,     ///< the call was wrong
  exitCouldNot = 3,  ///< the call was right but could not be carried out
};

}  // namespace sentrel::programs
