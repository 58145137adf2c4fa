// The sound server's sinks and default sink, watched through libpulse.
#include "qt/sound/SinkWatch.h"

#include <QMediaDevices>
#include <QMetaObject>
#include <QMutex>
#include <QMutexLocker>
#include <QPointer>

#include <pulse/pulseaudio.h>

#include <algorithm>
#include <atomic>
#include <mutex>
#include <vector>

// Everything here but the constructor, the destructor and the readers runs on
// libpulse's thread; what the readers see is guarded by `mutex`.
struct SinkWatch::Server {
    explicit Server(SinkWatch* owner) : owner(owner) {}

    QPointer<SinkWatch> owner;
    pa_threaded_mainloop* loop = nullptr;
    pa_context* context = nullptr;
    pa_time_event* retry = nullptr;
    int retryDelayMs = 0;

    mutable QMutex mutex;
    bool connected = false;      // and both the default and the sinks are known
    bool everConnected = false;
    bool haveServer = false, haveSinks = false;
    QByteArray defaultSink;
    std::vector<QByteArray> sinks;  // the server's sinks by name
    std::vector<QByteArray> listing;  // a sink list being read
    std::atomic<bool> notifyPending{false};

    // A burst of news (a new default, then the sink list) is told once.
    void Notify() {
        if (notifyPending.exchange(true)) return;
        QMetaObject::invokeMethod(
            owner.data(),
            [w = owner, this] {
                if (!w) return;
                notifyPending = false;
                emit w->Changed();
            },
            Qt::QueuedConnection);
    }

    void Connect() {
        pa_proplist* props = pa_proplist_new();
        pa_proplist_sets(props, PA_PROP_APPLICATION_NAME, "Tessuma Sudoku");
        pa_proplist_sets(props, PA_PROP_APPLICATION_ID, "tessuma");
        context = pa_context_new_with_proplist(pa_threaded_mainloop_get_api(loop), "Tessuma Sudoku", props);
        pa_proplist_free(props);
        if (!context) return RetryLater();
        pa_context_set_state_callback(context, &Server::OnState, this);
        pa_context_set_subscribe_callback(context, &Server::OnEvent, this);
        if (pa_context_connect(context, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr) < 0) Drop();
    }

    // The connection failed or ended: forget the server, try again later.
    void Drop() {
        if (context) {
            pa_context_set_state_callback(context, nullptr, nullptr);
            pa_context_set_subscribe_callback(context, nullptr, nullptr);
            pa_context_disconnect(context);
            pa_context_unref(context);
            context = nullptr;
        }
        bool was;
        {
            QMutexLocker lock(&mutex);
            was = connected;
            connected = false;
            defaultSink.clear();
            sinks.clear();
        }
        if (was) Notify();
        RetryLater();
    }

    // Soon after a restart, then less and less often while there is no server.
    void RetryLater() {
        retryDelayMs = retryDelayMs == 0 ? 500 : std::min(retryDelayMs * 2, 30000);
        pa_mainloop_api* api = pa_threaded_mainloop_get_api(loop);
        timeval at;
        pa_timeval_add(pa_gettimeofday(&at), pa_usec_t(retryDelayMs) * 1000);
        if (retry)
            api->time_restart(retry, &at);
        else
            retry = api->time_new(api, &at, &Server::OnRetry, this);
    }

    static void OnRetry(pa_mainloop_api*, pa_time_event*, const timeval*, void* self) {
        static_cast<Server*>(self)->Connect();
    }

    static void OnState(pa_context* c, void* self) {
        auto* s = static_cast<Server*>(self);
        switch (pa_context_get_state(c)) {
            case PA_CONTEXT_READY: {
                s->retryDelayMs = 0;
                s->haveServer = s->haveSinks = false;
                auto mask = pa_subscription_mask_t(PA_SUBSCRIPTION_MASK_SINK | PA_SUBSCRIPTION_MASK_SERVER);
                if (pa_operation* o = pa_context_subscribe(c, mask, nullptr, nullptr)) pa_operation_unref(o);
                s->AskServer();
                s->AskSinks();
                break;
            }
            case PA_CONTEXT_FAILED:
            case PA_CONTEXT_TERMINATED: s->Drop(); break;
            default: break;
        }
    }

    static void OnEvent(pa_context*, pa_subscription_event_type_t t, uint32_t, void* self) {
        auto* s = static_cast<Server*>(self);
        if ((t & PA_SUBSCRIPTION_EVENT_FACILITY_MASK) == PA_SUBSCRIPTION_EVENT_SERVER)
            s->AskServer();
        else
            s->AskSinks();  // a sink came, went or changed (its rate, say)
    }

    // Called under the mutex: the server is known once both answers are in.
    void Known() {
        if (haveServer && haveSinks) connected = everConnected = true;
    }

    void AskServer() {
        if (pa_operation* o = pa_context_get_server_info(context, &Server::OnServerInfo, this)) pa_operation_unref(o);
    }
    void AskSinks() {
        if (pa_operation* o = pa_context_get_sink_info_list(context, &Server::OnSink, this)) pa_operation_unref(o);
    }

    static void OnServerInfo(pa_context*, const pa_server_info* info, void* self) {
        auto* s = static_cast<Server*>(self);
        if (!info) return;
        {
            QMutexLocker lock(&s->mutex);
            s->defaultSink = info->default_sink_name ? QByteArray(info->default_sink_name) : QByteArray();
            s->haveServer = true;
            s->Known();
        }
        s->Notify();
    }

    static void OnSink(pa_context*, const pa_sink_info* info, int eol, void* self) {
        auto* s = static_cast<Server*>(self);
        if (eol == 0 && info) {
            s->listing.emplace_back(info->name);
            return;
        }
        {
            QMutexLocker lock(&s->mutex);
            if (eol > 0) {
                s->sinks.swap(s->listing);
                s->haveSinks = true;
                s->Known();
            }
        }
        s->listing.clear();
        s->Notify();
    }
};

std::shared_ptr<SinkWatch> SinkWatch::Shared() {
    static std::mutex guard;
    static std::weak_ptr<SinkWatch> current;
    std::lock_guard lock(guard);
    std::shared_ptr<SinkWatch> w = current.lock();
    if (!w) {
        w.reset(new SinkWatch);
        current = w;
    }
    return w;
}

SinkWatch::SinkWatch() : server_(std::make_unique<Server>(this)) {
    Server& s = *server_;
    s.loop = pa_threaded_mainloop_new();
    if (!s.loop) return;
    pa_threaded_mainloop_set_name(s.loop, "tessuma-sinks");
    if (pa_threaded_mainloop_start(s.loop) < 0) {
        pa_threaded_mainloop_free(s.loop);
        s.loop = nullptr;
        return;
    }
    pa_threaded_mainloop_lock(s.loop);
    s.Connect();
    pa_threaded_mainloop_unlock(s.loop);
}

SinkWatch::~SinkWatch() {
    Server& s = *server_;
    if (!s.loop) return;
    pa_threaded_mainloop_lock(s.loop);
    if (s.context) {
        pa_context_set_state_callback(s.context, nullptr, nullptr);
        pa_context_set_subscribe_callback(s.context, nullptr, nullptr);
        pa_context_disconnect(s.context);
        pa_context_unref(s.context);
        s.context = nullptr;
    }
    if (s.retry) pa_threaded_mainloop_get_api(s.loop)->time_free(s.retry);
    pa_threaded_mainloop_unlock(s.loop);
    pa_threaded_mainloop_stop(s.loop);
    pa_threaded_mainloop_free(s.loop);
}

bool SinkWatch::Connected() const {
    QMutexLocker lock(&server_->mutex);
    return server_->connected;
}

QAudioDevice SinkWatch::Output() const {
    QByteArray name;
    {
        QMutexLocker lock(&server_->mutex);
        // Not yet connected (just started): Qt's default serves. Lost after
        // a connection (the server restarting): nothing for now, since Qt
        // may still list sinks of the server that went.
        if (!server_->connected) return server_->everConnected ? QAudioDevice() : QMediaDevices::defaultAudioOutput();
        const auto& sinks = server_->sinks;
        if (std::find(sinks.begin(), sinks.end(), server_->defaultSink) == sinks.end()) return {};
        name = server_->defaultSink;
    }
    const QList<QAudioDevice> outputs = QMediaDevices::audioOutputs();
    for (const QAudioDevice& d : outputs)
        if (d.id() == name) return d;
    return {};  // Qt hasn't heard of it yet: in a moment
}
