#pragma once
// Letting go of a QAudioSink.

class QAudioSink;

namespace sound {

// Stops the sink and deletes it. A sink's destructor runs the event loop once;
// from inside a handler that would run other handlers too early, so there the
// sink goes when the loop is free.
void Discard(QAudioSink* sink);

}  // namespace sound
