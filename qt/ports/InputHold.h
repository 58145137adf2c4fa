#pragma once
// Holds back the player's input while the game waits in place for something
// of its own (an answer from the web, the solver's search); everything else
// goes on: repaints, timers, and the desktop's requests, a close included.

#include <QCoreApplication>
#include <QEvent>
#include <QObject>

class InputHold : public QObject {
public:
    InputHold() { QCoreApplication::instance()->installEventFilter(this); }
    ~InputHold() override { QCoreApplication::instance()->removeEventFilter(this); }

protected:
    bool eventFilter(QObject*, QEvent* e) override { return e->isInputEvent(); }
};
