// SPDX-License-Identifier: GPL-3.0-or-later

#include "Harness.h"
#include "host/services/view/ViewGate.h"

using norvo::require;
using norvo::ViewGate;

/// A request gets what it may have: without the token nothing of the panel, and without a token
/// nothing for a page from elsewhere.
NORVO_HARNESS(HttpHead)
{
    static const ViewGate withToken("a token that nobody guesses");
    static const ViewGate open("");

    const auto head = norvo::HttpHead::parse(input);
    if (!head) {
        return;
    }
    require(head->path.startsWith('/') && !head->path.contains('?'), "a path is one");
    const auto answer = withToken.answerTo(*head);
    const bool mayHave = input.contains("nobody") || input.contains('%') ||
                         answer == ViewGate::Answer::TokenNeeded ||
                         answer == ViewGate::Answer::WrongMethod;
    require(mayHave, "without the token nothing is given");
    const bool isGiven = open.answerTo(*head) == ViewGate::Answer::Values;
    const QByteArray origin = head->fields.value("origin");
    require(!isGiven || origin.isEmpty() || origin.toLower().contains("localhost") ||
                origin.contains("127.0.0.1") || origin.contains("[::1]"),
            "a page from elsewhere gets nothing");
}
