// SPDX-License-Identifier: GPL-3.0-or-later
// What a form held when it was closed without saving, one a `Schema`: it lasts as long as the program.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <utility>

template <class Entwurf> class Entwuerfe {
public:
    /// Keeps what the form of this `Schema` held, in place of what was kept for it before.
    void merken(const std::string& schema, Entwurf entwurf) {
        entwuerfe_.insert_or_assign(schema, std::move(entwurf));
    }
    bool gibtEs(const std::string& schema) const { return entwuerfe_.contains(schema); }
    /// Hands it over; there is none afterwards.
    std::optional<Entwurf> nehmen(const std::string& schema) {
        auto knoten = entwuerfe_.extract(schema);
        return knoten.empty() ? std::nullopt : std::optional<Entwurf>(std::move(knoten.mapped()));
    }
    void vergessen(const std::string& schema) { entwuerfe_.erase(schema); }

private:
    std::map<std::string, Entwurf> entwuerfe_;
};
