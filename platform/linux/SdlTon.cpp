// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/SdlTon.h"

#include <SDL.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <numbers>
#include <system_error>
#include <utility>
#include <vector>

using namespace std::chrono_literals;

namespace {

constexpr int ABTASTRATE = 48000; // a second
constexpr double LAUTSTAERKE = 0.25 * 32767;
constexpr std::uint32_t LAENGSTER = 5000;       // ms
constexpr std::size_t RAMPE = ABTASTRATE / 500; // 2 ms, or the ends of a tone click
constexpr auto RUHE = 3s;

using Klang = std::vector<Sint16>;

Klang klang(std::uint32_t frequenz, std::uint32_t dauer) {
    Klang proben(std::size_t{std::min(dauer, LAENGSTER)} * ABTASTRATE / 1000);
    const double winkel = 2 * std::numbers::pi * frequenz / ABTASTRATE;
    for (std::size_t i = 0; i < proben.size(); ++i) {
        const auto vomEnde = std::min({i, proben.size() - 1 - i, RAMPE});
        const double staerke = LAUTSTAERKE * static_cast<double>(vomEnde) / RAMPE;
        proben[i] = static_cast<Sint16>(std::lround(staerke * std::sin(winkel * static_cast<double>(i))));
    }
    return proben;
}

/// The sound device, open while there is an object.
class Geraet {
public:
    Geraet() {
        bereit_ = SDL_InitSubSystem(SDL_INIT_AUDIO) == 0;
        if (!bereit_)
            return;
        SDL_AudioSpec wunsch{};
        wunsch.freq = ABTASTRATE;
        wunsch.format = AUDIO_S16SYS;
        wunsch.channels = 1;
        wunsch.samples = 512;
        geraet_ = SDL_OpenAudioDevice(nullptr, 0, &wunsch, nullptr, 0); // SDL converts
        if (geraet_ != 0)
            SDL_PauseAudioDevice(geraet_, 0);
    }
    ~Geraet() {
        if (geraet_ != 0) {
            SDL_ClearQueuedAudio(geraet_); // closing would wait for what is left
            SDL_CloseAudioDevice(geraet_);
        }
        if (bereit_)
            SDL_QuitSubSystem(SDL_INIT_AUDIO);
    }
    Geraet(const Geraet&) = delete;
    Geraet& operator=(const Geraet&) = delete;

    void spielen(const Klang& proben) const {
        if (geraet_ == 0)
            return;
        SDL_ClearQueuedAudio(geraet_);
        SDL_QueueAudio(geraet_, proben.data(), static_cast<Uint32>(proben.size() * sizeof(Sint16)));
    }

private:
    bool bereit_ = false;
    SDL_AudioDeviceID geraet_ = 0;
};

} // namespace

SdlTon::~SdlTon() {
    {
        const std::lock_guard sperre(schloss_);
        ende_ = true;
    }
    bewegung_.notify_all();
    if (faden_.joinable())
        faden_.join();
}

void SdlTon::Beep(std::uint32_t frequenz, std::uint32_t dauer) {
    {
        const std::lock_guard sperre(schloss_);
        ton_ = Ton{frequenz, dauer};
    }
    bewegung_.notify_all();
    if (!faden_.joinable()) {
        try {
            faden_ = std::thread([this] { faden(); });
        } catch (const std::system_error&) { // silence, then
        }
    }
}

/// Waits for a tone: for ever, or until the device has rested long enough. None also at the end.
std::optional<SdlTon::Ton> SdlTon::naechster(bool mitFrist) {
    std::unique_lock sperre(schloss_);
    const auto etwas = [this] { return ende_ || ton_; };
    if (mitFrist)
        bewegung_.wait_for(sperre, RUHE, etwas);
    else
        bewegung_.wait(sperre, etwas);
    return ende_ ? std::nullopt : std::exchange(ton_, std::nullopt);
}

void SdlTon::faden() {
    while (auto ton = naechster(false)) {
        const Geraet geraet;
        for (; ton; ton = naechster(true))
            geraet.spielen(klang(ton->frequenz, ton->dauer));
    }
    SDL_TLSCleanup(); // SDL does it for threads of its own only
}
