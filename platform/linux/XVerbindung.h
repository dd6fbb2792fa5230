// SPDX-License-Identifier: GPL-3.0-or-later
// A connection to an X server that may fail without ending the process.
#pragma once

#include <functional>
#include <memory>
#include <string>

struct _XDisplay;
union _XEvent;

class XVerbindung {
public:
    /// Connects to the server `anzeige`, with "" to the one that $DISPLAY names. Null if there is none.
    static std::unique_ptr<XVerbindung> oeffnen(const std::string& anzeige);

    XVerbindung(const XVerbindung&) = delete;
    XVerbindung& operator=(const XVerbindung&) = delete;
    ~XVerbindung();

    _XDisplay* anzeige() const { return anzeige_; }
    /// False from the moment at which the loss of the server was noticed; calls of Xlib are then without
    /// effect.
    bool steht() const { return steht_; }

    /// Sends what is buffered, reads what has come and hands the events out. Does not wait. To be called now
    /// and then even by who wants no events: what nobody reads piles up in the server.
    void ereignisse(const std::function<void(const _XEvent&)>& behandeln);

private:
    explicit XVerbindung(_XDisplay* anzeige);

    _XDisplay* anzeige_;
    bool steht_ = true;
};
