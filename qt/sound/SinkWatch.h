#pragma once
// Which output the sound server plays on now.
//
// Qt's list of outputs follows sinks as they come and go, but the flag that
// marks the default one is set when a sink is first seen and never again: a
// player who switches from the speakers to a headset keeps hearing new sounds
// on the speakers. A stream connected to a sink that is gone by the time the
// server reads the request never becomes ready, and Qt waits for it forever.
//
// So the sound module keeps its own small connection to the server (through
// libpulse, which PulseAudio and PipeWire both answer), told of every change
// of the sinks and of the default, and picks the output from it: the server's
// default sink, as long as it exists on the server right now. The connection
// lives on libpulse's own thread, which sleeps until the server has news; it
// comes back by itself after the server restarts.

#include <QAudioDevice>
#include <QByteArray>
#include <QObject>

#include <memory>

class SinkWatch : public QObject {
    Q_OBJECT
public:
    // The watch of this process, made when first asked for and ended when
    // the last holder lets go.
    static std::shared_ptr<SinkWatch> Shared();
    ~SinkWatch() override;

    // The output to play on now; null when there is none (no server, no sink,
    // or the default sink has just gone). Without a watch connection (a build
    // or a system without libpulse, a server that doesn't answer it) Qt's own
    // default.
    QAudioDevice Output() const;
    // Whether the watch has a connection to the server right now.
    bool Connected() const;

signals:
    // The sinks, the default sink or the server changed; delivered on the
    // thread the watch was made on, once for a burst of changes.
    void Changed();

private:
    SinkWatch();
    struct Server;
    std::unique_ptr<Server> server_;
};
