// SPDX-License-Identifier: GPL-3.0-or-later

#include "host/program/TypeListing.h"

#include "host/catalogue/Catalogue.h"
#include "host/catalogue/Listing.h"
#include "host/catalogue/schema/Schema.h"
#include "host/panel/file/EditDistance.h"
#include "host/program/options/CommandLine.h"
#include "host/program/streams/Console.h"
#include "host/yaml/Quote.h"

namespace norvo {

namespace {

QString unknownType(const QString& type, const QStringList& known)
{
    const QString nearest = didYouMean(type, known);
    return QString("unknown device type %1%2")
        .arg(inQuotes(type), nearest.isEmpty() ? "; valid names: " + known.join(", ") : nearest);
}

} // namespace

int listTypes(const Options& options, const DeviceManager& manager)
{
    const Catalogue catalogue(manager);
    Listing::Types types;
    if (options.action == Options::Action::Describe) {
        const TypeWords* const type = catalogue.words(options.describedType);
        if (!type) {
            Console::reportError(unknownType(options.describedType, catalogue.keys()));
            return 2;
        }
        types.append(type);
    } else {
        types = Listing::allTypes(catalogue);
    }
    for (const QString& problem : catalogue.problems()) {
        Console::report(problem);
    }
    switch (options.action) {
    case Options::Action::Types:
        Console::print(Listing::lines(types));
        break;
    case Options::Action::Schema:
        Console::print(Schema::ofPanelFiles(catalogue));
        break;
    default:
        Console::print(Listing::as(options.format, types));
    }
    return 0;
}

} // namespace norvo
