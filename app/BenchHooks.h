#pragma once
// Measuring hook of the whole-program benchmark (bench/sitting.py), built
// into the measured twin of the game (tessuma-measured) and never into the
// game itself. It does nothing unless the environment asks for it:
//
//   TESSUMA_BENCH_DEAL=L  once the main window's first frame has been painted,
//       wait a moment, deal a puzzle of level L (0..3) as the level menu
//       does, and once the dealt board has been painted and handed to the
//       window system print
//           tessuma-bench: deal-ns N             (from the choice to the frame)
//       and quit.
//
// Quitting leaves the event loop at once: the close command does not run,
// so nothing is asked and no setting is written.

namespace benchhooks {

// Call once after the QApplication exists and before its event loop runs.
void Install();

}  // namespace benchhooks
