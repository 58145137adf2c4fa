#pragma once
// Runs a piece of work once a window's first frame has been painted (or,
// should it never be painted, after a while anyway): slow set-up that the
// player need not wait for. Should the window be destroyed first, the work
// is dropped.

#include <functional>

class QWidget;

void AfterFirstFrame(QWidget* window, std::function<void()> work, int latestMs = 2000);
