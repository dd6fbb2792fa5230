// SPDX-License-Identifier: GPL-3.0-or-later
// What a form held whenever it was closed without saving, by `Schema`: it lasts as long as the program.
#pragma once

#include <cstddef>
#include <deque>
#include <map>
#include <optional>
#include <string>
#include <utility>

template <class Entwurf> class Entwuerfe {
public:
    static constexpr std::size_t HOECHSTENS = 20; ///< of a `Schema`

    /// Keeps what the form of this `Schema` held; what was kept for it before stays behind it, but for the
    /// oldest where there would be too many.
    void merken(const std::string& schema, Entwurf entwurf) {
        auto& dieses = entwuerfe_[schema];
        dieses.push_back(std::move(entwurf));
        if (dieses.size() > HOECHSTENS)
            dieses.pop_front();
    }
    bool gibtEs(const std::string& schema) const { return entwuerfe_.contains(schema); }
    /// Hands the newest over, which is kept no longer.
    std::optional<Entwurf> nehmen(const std::string& schema) {
        const auto stelle = entwuerfe_.find(schema);
        if (stelle == entwuerfe_.end())
            return std::nullopt;
        std::optional<Entwurf> neuester(std::move(stelle->second.back()));
        stelle->second.pop_back();
        if (stelle->second.empty())
            entwuerfe_.erase(stelle);
        return neuester;
    }
    /// Keeps what a restored one replaces on the form, behind all others: who goes on taking sees each again.
    void hintanstellen(const std::string& schema, Entwurf entwurf) {
        entwuerfe_[schema].push_front(std::move(entwurf));
    }
    void vergessen(const std::string& schema) { entwuerfe_.erase(schema); }
    /// What was kept goes with its `Schema` to the other name.
    void umbenennen(const std::string& alt, const std::string& neu) {
        auto dieses = entwuerfe_.extract(alt);
        if (dieses.empty())
            return;
        dieses.key() = neu;
        entwuerfe_.erase(neu);
        entwuerfe_.insert(std::move(dieses));
    }

private:
    std::map<std::string, std::deque<Entwurf>> entwuerfe_; ///< of each `Schema` at least one, the newest last
};
