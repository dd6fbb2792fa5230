// SPDX-License-Identifier: GPL-3.0-or-later
// XML as strictly as the axis file needs it: elements with attributes, and nothing else that would be lost
// when the file is written back.
//
// expat reads. It knows the rules of XML 1.0 and of its namespaces; refused beside what is not well-formed
// are another encoding than UTF-8, document types and with them all entities but the five of XML, text
// between the elements, and files too large or too deep to be one of these. Comments and processing
// instructions are passed over.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Attributes of an element, in the order in which they stand; declarations of namespaces come first.
using Xmlattribute = std::vector<std::pair<std::string, std::string>>;

struct Xmlelement {
    std::string name; ///< with its prefix, as it is written
    Xmlattribute attribute;
    std::vector<Xmlelement> kinder;
};

/// A file of more bytes is none of these, nor one with elements inside each other deeper than this.
inline constexpr std::size_t GROESSTES_XML = std::size_t{16} << 20;
inline constexpr std::size_t TIEFSTES_XML = 16;

/// The element of a document; nothing when it is refused. A prefix means the same all through a document that
/// is read: one that the root declares is not declared again.
std::optional<Xmlelement> xmlLesen(std::string_view xml);

/// The document of an element, indented by tabs, without a declaration. The names must be names of XML and
/// the values texts that it can hold.
std::string xmlSchreiben(const Xmlelement& wurzel);

/// The number of characters of a UTF-8 text; nothing when its bytes are no UTF-8 or when one of its
/// characters may not stand in XML (control characters but tab and line ends, U+FFFE, U+FFFF).
std::optional<std::size_t> xmlZeichenzahl(std::string_view text);
