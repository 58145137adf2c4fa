// Letting go of a QAudioSink.
#include "qt/sound/Sink.h"

#include <QAudioSink>
#include <QThread>

void sound::Discard(QAudioSink* sink) {
    if (!sink) return;
    QObject::disconnect(sink, nullptr, nullptr, nullptr);
    sink->stop();
    if (QThread::currentThread()->loopLevel() > 0)
        sink->deleteLater();
    else
        delete sink;
}
