// SPDX-License-Identifier: GPL-3.0-or-later
// A file that is about to be removed, kept so that it can be laid back under its name.
//
// It is only held open: the system keeps its content as long, and gives its room free as soon as the last
// process that has it open ends, however that ends. So nothing is left over by a crash.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

class Verwahrdatei {
public:
    /// Nothing where the file can't be read.
    static std::optional<Verwahrdatei> oeffnen(const std::filesystem::path& pfad);
    Verwahrdatei(Verwahrdatei&& andere) noexcept;
    Verwahrdatei& operator=(Verwahrdatei&& andere) noexcept;
    ~Verwahrdatei();

    const std::filesystem::path& pfad() const { return pfad_; }
    /// Whether something else has its name now.
    bool nameVergeben() const;
    /// Lays its content under its name, unless it lies there still. False when it is not safe on the disk.
    bool zuruecklegen() const;

private:
    Verwahrdatei(std::filesystem::path pfad, int deskriptor);
    bool liegtNoch() const;
    std::optional<std::string> inhalt() const;

    std::filesystem::path pfad_;
    int deskriptor_;
};
