// Starts a program and reports how long it takes until the first pixels of
// its first window reach the screen, watched through the X Damage extension
// (the same way for any toolkit). Prints the milliseconds from exec and the
// program's pid, then leaves the program running for the caller:
//
//   bench_firstframe [--timeout-ms N] -- PROGRAM ARGS...
//   -> "first_frame_ms 31.4 pid 12345"
//
// A window counts once it is mapped as a child of the root (no window
// manager runs during the measurement) and is at least 200 by 150 pixels:
// the damage of interest is the first inside that window.
#include <X11/Xlib.h>
#include <X11/extensions/Xdamage.h>
#include <X11/extensions/Xfixes.h>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace {

double MsSince(std::chrono::steady_clock::time_point t0) {
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - t0).count();
}

struct Box {
    Window id;
    int x, y, w, h;
};

}  // namespace

int main(int argc, char** argv) {
    int timeoutMs = 20000;
    int first = 1;
    for (; first < argc; ++first) {
        if (std::strcmp(argv[first], "--timeout-ms") == 0 && first + 1 < argc) {
            timeoutMs = std::atoi(argv[++first]);
        } else if (std::strcmp(argv[first], "--") == 0) {
            ++first;
            break;
        }
    }
    if (first >= argc) {
        std::fprintf(stderr, "usage: bench_firstframe [--timeout-ms N] -- PROGRAM ARGS...\n");
        return 2;
    }
    Display* dpy = XOpenDisplay(nullptr);
    if (!dpy) {
        std::fprintf(stderr, "bench_firstframe: no X display\n");
        return 2;
    }
    int damageEvent = 0, damageError = 0;
    if (!XDamageQueryExtension(dpy, &damageEvent, &damageError)) {
        std::fprintf(stderr, "bench_firstframe: the X server has no Damage extension\n");
        return 2;
    }
    const Window root = DefaultRootWindow(dpy);
    XSelectInput(dpy, root, SubstructureNotifyMask);
    const Damage damage = XDamageCreate(dpy, root, XDamageReportNonEmpty);
    const XserverRegion region = XFixesCreateRegion(dpy, nullptr, 0);
    XSync(dpy, False);
    XDamageSubtract(dpy, damage, None, None);  // what happened before the start

    const auto t0 = std::chrono::steady_clock::now();
    const pid_t pid = fork();
    if (pid == 0) {
        // The program's own output would hold the caller's pipe open.
        const int null = open("/dev/null", O_WRONLY);
        dup2(null, 1);
        dup2(null, 2);
        close(ConnectionNumber(dpy));
        execvp(argv[first], argv + first);
        _exit(127);
    }
    std::vector<Box> windows;
    while (MsSince(t0) < timeoutMs) {
        if (!XPending(dpy)) {
            pollfd p{ConnectionNumber(dpy), POLLIN, 0};
            poll(&p, 1, 50);
            continue;
        }
        XEvent e;
        XNextEvent(dpy, &e);
        if (e.type == MapNotify && e.xmap.event == root) {
            XWindowAttributes a;
            if (XGetWindowAttributes(dpy, e.xmap.window, &a) && a.width >= 200 && a.height >= 150)
                windows.push_back({e.xmap.window, a.x, a.y, a.width, a.height});
        } else if (e.type == damageEvent + XDamageNotify) {
            XDamageSubtract(dpy, damage, None, region);
            int n = 0;
            XRectangle* r = XFixesFetchRegion(dpy, region, &n);
            bool inside = false;
            for (int i = 0; i < n && !inside; ++i)
                for (const Box& b : windows)
                    inside = inside || (r[i].x < b.x + b.w && r[i].x + r[i].width > b.x && r[i].y < b.y + b.h &&
                                        r[i].y + r[i].height > b.y);
            if (r) XFree(r);
            if (inside) {
                std::printf("first_frame_ms %.1f pid %d\n", MsSince(t0), int(pid));
                std::fflush(stdout);
                return 0;
            }
        }
    }
    std::fprintf(stderr, "bench_firstframe: no frame within %d ms\n", timeoutMs);
    std::printf("first_frame_ms -1 pid %d\n", int(pid));
    return 1;
}
