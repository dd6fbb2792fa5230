// The keys that the engine holds down, one entry "<slot>-<key>," each, in the order in which they were
// pressed. The list outlasts a run: what is held when a run stops is still listed in the next one.
#pragma once

#include <string>
#include <string_view>
#include <vector>

class XPTaste;

/// The entry of a key that a slot holds: "2-65," for key code 65 held by slot 2.
std::string halteeintrag(int slot, std::string_view taste);

class GehalteneTasten {
public:
    /// With `entfernen` 0 adds the entry `text`, once; the caller presses the key. With any other value
    /// removes the first entry of the same slot, whatever its key, and releases the key of that entry.
    void GehaltenPflegen(std::string_view text, int entfernen, XPTaste& xpTaste);

    /// `GehaltenText`: all entries joined in list order.
    const std::string& GehaltenText() const { return text_; }

private:
    void hinzufuegen(std::string_view eintrag);
    void entfernen(std::string_view eintrag, XPTaste& xpTaste);
    void textNeuBilden();

    std::vector<std::string> eintraege_;
    std::string text_;
};
