#pragma once
// Measuring hooks for the whole-program benchmarks (bench/run-all.sh), built
// into the measured twin of the game (tessuma-measured) and never into the
// game itself. They do nothing unless the environment asks for them:
//
//   TESSUMA_BENCH_FIRST_FRAME=1  once the main window's first frame has been
//       painted and handed to the window system, print
//           tessuma-bench: first-frame-ns N      (CLOCK_MONOTONIC)
//           tessuma-bench: start rss-kb N hwm-kb N
//       and quit.
//   TESSUMA_BENCH_DEAL=L  (with the above) instead of quitting, wait a moment,
//       deal a puzzle of level L (0..3) as the level menu does, and once the
//       dealt board has been painted print
//           tessuma-bench: deal-ns N             (from the choice to the frame)
//           tessuma-bench: deal rss-kb N hwm-kb N
//       and quit.
//
// Quitting leaves the event loop at once: the close command does not run,
// so nothing is asked and no setting is written.

namespace benchhooks {

// Call once after the QApplication exists and before its event loop runs.
void Install();

}  // namespace benchhooks
