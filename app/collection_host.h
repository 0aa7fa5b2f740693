// What the collection asks of the plot.
#pragma once

#include "document/collection.h"

namespace korvinth::app {

class CollectionHost
{
public:
    virtual ~CollectionHost() = default;
    // The plot as it is drawn, without descriptions.
    virtual document::CollectionEntry CurrentPlot() = 0;
    // Makes the entry's plot the current one and draws it.
    virtual void DrawEntry(const document::CollectionEntry& entry) = 0;
};

}  // namespace korvinth::app
