#include "core/Class.h"
#include "core/basTime.h"
#include "player/CFakeMediaControl.h"
#include "player/CPlayers.h"
#include "player/basPlayer.h"

#include <benchmark/benchmark.h>

// The position read and its time string: the player's share of one stamp.
static void BM_PlayerPositionToString(benchmark::State &state)
{
    CFakeMediaControl control;
    auto players = Class::MakeCollection<CPlayers>();
    CPlayer *player = players->Create(nullptr, &control);
    player->setContent(QStringLiteral("/bench/film.mkv"));
    double t = 0;
    for (auto _ : state) {
        control.setPositionDirect(t);
        benchmark::DoNotOptimize(TimeToString(player->CurrentPosition() - 0.3, 2));
        t += 0.37;
        if (t > 50)
            t = 0;
    }
}
BENCHMARK(BM_PlayerPositionToString);

// A hot-key jump sent to every player of a list of 20.
static void BM_PlayBackEveryPlayer(benchmark::State &state)
{
    std::vector<std::unique_ptr<CFakeMediaControl>> controls;
    auto players = Class::MakeCollection<CPlayers>();
    for (int i = 0; i < 20; ++i) {
        controls.push_back(std::make_unique<CFakeMediaControl>());
        players->Create(nullptr, controls.back().get())->setContent(QStringLiteral("/bench/film.mkv"));
    }
    for (auto _ : state) {
        for (auto &c : controls) {
            c->setPositionDirect(30.0);
            c->Calls.clear();
        }
        PlayBack(*players, nullptr);
    }
}
BENCHMARK(BM_PlayBackEveryPlayer);
