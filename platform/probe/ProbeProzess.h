// SPDX-License-Identifier: GPL-3.0-or-later
// A process that writes down what is asked of it.
#pragma once

#include "platform/Prozess.h"

#include <vector>

class ProbeProzess final : public Prozess {
public:
    /// `verzeichnis` stands for the current directory; `trenner` is put between it and a name.
    explicit ProbeProzess(std::string verzeichnis = "C:\\x", char trenner = '\\')
        : verzeichnis_(std::move(verzeichnis)), trenner_(trenner) {}

    bool SetPriorityClass(std::uint32_t klasse) override {
        klassen.push_back(klasse);
        return true;
    }
    std::string GetFullPathNameA(std::string_view name) override {
        return verzeichnis_ + trenner_ + std::string(name);
    }
    bool ShellExecuteA(const std::string& datei) override {
        geoeffnet.push_back(datei);
        return oeffnet;
    }
    bool kapitelOeffnen(const std::string& seite, const std::string& anker) override {
        return ShellExecuteA(seite + '#' + anker);
    }

    std::vector<std::uint32_t> klassen;
    std::vector<std::string> geoeffnet;
    bool oeffnet = true; ///< what ShellExecuteA answers

private:
    std::string verzeichnis_;
    char trenner_;
};
