// A stick that stands where the test says and writes down what is asked of it.
#pragma once

#include "engine/stick/Stick.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

class Probestick final : public Stick {
public:
    Probestick(std::string name, std::vector<std::string>& protokoll)
        : name_(std::move(name)), protokoll_(protokoll) {}

    void tabellenLaden(int ebene) override {
        merken("laden " + std::to_string(ebene));
        if (beimLaden)
            beimLaden();
    }
    Stickposition lesen(const Laufdienste&) override {
        merken("lesen");
        if (beimLesen)
            beimLesen();
        return ort;
    }
    void auswerten(const Laufdienste&, Stickposition& wo, int ebene) override {
        merken("auswerten (" + std::to_string(wo.x) + "," + std::to_string(wo.y) + ") in Ebene " +
               std::to_string(ebene));
        if (beimAuswerten)
            beimAuswerten(*this, wo);
    }

    Stickposition ort; ///< where it stands
    std::function<void()> beimLaden;
    std::function<void()> beimLesen;
    std::function<void(Probestick&, Stickposition&)> beimAuswerten;

private:
    void merken(const std::string& was) { protokoll_.push_back(name_ + " " + was); }

    std::string name_;
    std::vector<std::string>& protokoll_;
};
