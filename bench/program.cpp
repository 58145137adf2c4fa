// Whole-program figures: the real game, started under an X server, timed
// and weighed from the outside.
//
//   TESSUMA_GAME   the game's program (required); bench/run-all.sh sets it
//   DISPLAY        a running X server (run-all.sh starts Xvfb)
//
// BM_FirstFrame  from just before exec to the first frame of the window
//                painted and handed to the X server; the resident memory
//                then (VmRSS, and its peak VmHWM).
// BM_DealToPaint from choosing a level to the dealt board painted, for each
//                level; the resident memory after the deal.
//
// The game prints the moments itself when TESSUMA_BENCH_FIRST_FRAME=1 (and
// TESSUMA_BENCH_DEAL=L) ask for it (app/BenchHooks.h); the clock is
// CLOCK_MONOTONIC in both processes. Every start gets a settings folder and
// a runtime folder of this benchmark, the same for all its starts, so the
// player's own settings and a running game stay out of it. The first start
// is not timed: it writes the default settings and warms the disk cache.

#include <benchmark/benchmark.h>

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <map>
#include <sstream>
#include <string>
#include <vector>

extern char** environ;

namespace {

long long MonotonicNs() {
    timespec ts{};
    clock_gettime(CLOCK_MONOTONIC, &ts);
    return static_cast<long long>(ts.tv_sec) * 1000000000LL + ts.tv_nsec;
}

// What one start of the game reported: "first-frame-ns" -> N, "start rss-kb"
// -> N, and so on.
using Report = std::map<std::string, long long>;

struct Folders {
    std::string config, runtime;
    Folders() {
        std::string base = (std::filesystem::temp_directory_path() / "tessuma-bench-XXXXXX").string();
        if (char* made = mkdtemp(base.data())) {
            config = std::string(made) + "/config";
            runtime = std::string(made) + "/runtime";
            std::filesystem::create_directories(config);
            std::filesystem::create_directories(runtime);
            std::filesystem::permissions(runtime, std::filesystem::perms::owner_all);
            root = made;
        }
    }
    ~Folders() {
        std::error_code ec;
        if (!root.empty()) std::filesystem::remove_all(root, ec);
    }
    std::string root;
};

Folders& TheFolders() {
    static Folders folders;
    return folders;
}

// Starts the game, reads its report lines until it ends (or 30 s pass),
// and returns them with the moment of the start under "exec-ns".
bool RunGame(int dealLevel, Report& report, std::string& error) {
    const char* game = std::getenv("TESSUMA_GAME");
    if (!game || !*game) {
        error = "TESSUMA_GAME is not set";
        return false;
    }
    std::vector<std::string> env;
    for (char** e = environ; *e; ++e) {
        const std::string v = *e;
        if (v.rfind("TESSUMA_BENCH_", 0) == 0 || v.rfind("XDG_CONFIG_HOME=", 0) == 0 ||
            v.rfind("XDG_RUNTIME_DIR=", 0) == 0 || v.rfind("QT_QPA_PLATFORM=", 0) == 0)
            continue;
        env.push_back(v);
    }
    env.push_back("TESSUMA_BENCH_FIRST_FRAME=1");
    if (dealLevel >= 0) env.push_back("TESSUMA_BENCH_DEAL=" + std::to_string(dealLevel));
    env.push_back("XDG_CONFIG_HOME=" + TheFolders().config);
    env.push_back("XDG_RUNTIME_DIR=" + TheFolders().runtime);
    env.push_back("QT_QPA_PLATFORM=xcb");
    std::vector<char*> envp;
    for (std::string& v : env) envp.push_back(v.data());
    envp.push_back(nullptr);

    int out[2];
    if (pipe2(out, O_CLOEXEC) != 0) {
        error = "pipe failed";
        return false;
    }
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, out[1], 1);
    posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
    std::string program = game;
    char* argv[] = {program.data(), nullptr};

    pid_t pid = 0;
    const long long start = MonotonicNs();
    const int rc = posix_spawn(&pid, game, &actions, nullptr, argv, envp.data());
    posix_spawn_file_actions_destroy(&actions);
    close(out[1]);
    if (rc != 0) {
        close(out[0]);
        error = std::string("cannot start the game: ") + std::strerror(rc);
        return false;
    }
    report.clear();
    report["exec-ns"] = start;

    std::string text;
    const long long deadline = start + 30'000'000'000LL;
    while (true) {
        const long long left = (deadline - MonotonicNs()) / 1'000'000;
        if (left <= 0) break;
        pollfd p{out[0], POLLIN, 0};
        if (poll(&p, 1, static_cast<int>(left)) <= 0) break;
        char buf[1024];
        const ssize_t n = read(out[0], buf, sizeof buf);
        if (n <= 0) break;
        text.append(buf, static_cast<std::size_t>(n));
    }
    close(out[0]);
    int status = 0;
    if (waitpid(pid, &status, WNOHANG) == 0) {
        kill(pid, SIGKILL);
        waitpid(pid, &status, 0);
    }

    std::istringstream lines(text);
    std::string line;
    while (std::getline(lines, line)) {
        std::istringstream words(line);
        std::string tag, what, key1, key2;
        long long v1 = 0, v2 = 0;
        if (!(words >> tag >> what) || tag != "tessuma-bench:") continue;
        if (what == "first-frame-ns" || what == "deal-ns") {
            if (words >> v1) report[what] = v1;
        } else if (words >> key1 >> v1 >> key2 >> v2) {  // "start rss-kb N hwm-kb N"
            report[what + " " + key1] = v1;
            report[what + " " + key2] = v2;
        }
    }
    error.clear();
    if (!report.count("first-frame-ns")) {
        error = "the game printed no first frame (is TESSUMA_BENCH_FIRST_FRAME wired in, and DISPLAY set?)";
        return false;
    }
    if (dealLevel >= 0 && !report.count("deal-ns")) {
        error = "the game printed no deal";
        return false;
    }
    return true;
}

void Warm(benchmark::State& state) {
    static bool warmed = false;
    if (warmed) return;
    Report r;
    std::string error;
    if (!RunGame(-1, r, error)) state.SkipWithError(error.c_str());
    warmed = true;
}

// Starts the game once per iteration (dealing at `level`, or not below 0) and
// reports the mean and worst of the figure that `seconds` takes from each
// report, with the highest memory of the stage `stage` ("start" or "deal").
template <class Seconds>
void Measure(benchmark::State& state, int level, const char* stage, Seconds seconds) {
    Warm(state);
    double sum = 0, worst = 0, rss = 0, hwm = 0;
    for (auto _ : state) {
        Report r;
        std::string error;
        if (!RunGame(level, r, error)) {
            state.SkipWithError(error.c_str());
            break;
        }
        const double s = seconds(r);
        state.SetIterationTime(s);
        sum += s;
        worst = std::max(worst, s);
        rss = std::max(rss, static_cast<double>(r[std::string(stage) + " rss-kb"]));
        hwm = std::max(hwm, static_cast<double>(r[std::string(stage) + " hwm-kb"]));
    }
    const double n = static_cast<double>(state.iterations());
    if (n > 0) {
        state.counters["mean_ms"] = sum / n * 1e3;
        state.counters["worst_ms"] = worst * 1e3;
        state.counters["rss_MB"] = rss / 1024.0;
        state.counters["hwm_MB"] = hwm / 1024.0;
    }
}

void BM_FirstFrame(benchmark::State& state) {
    Measure(state, -1, "start",
            [](Report& r) { return static_cast<double>(r["first-frame-ns"] - r["exec-ns"]) * 1e-9; });
}
BENCHMARK(BM_FirstFrame)->UseManualTime()->Iterations(10)->Unit(benchmark::kMillisecond);

void BM_DealToPaint(benchmark::State& state) {
    Measure(state, static_cast<int>(state.range(0)), "deal",
            [](Report& r) { return static_cast<double>(r["deal-ns"]) * 1e-9; });
}
BENCHMARK(BM_DealToPaint)->DenseRange(0, 3)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
