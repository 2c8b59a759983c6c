// Compares two project models through their public IMedia interfaces alone, field by field.
//
// For round trips (read, write, read again) and for any test that wants to know whether two
// models say the same. Every difference comes back as one line naming where it is, such as
// "track[0]/track[1]/clip[0]/event[2]: start 1.5 != 2".
#pragma once

#include "corvelle/mediaproject.h"
#include "support/modelwalk.h"

#include <cstdint>
#include <string>
#include <vector>

namespace ModelCompare {

struct Options {
    // The document format's two known asymmetries between writing and reading. A plug-in
    // parameter's number goes out lower by the plug-in tag offset than the model holds it and
    // reads back as written, so a model read from a package it was written to holds the
    // negated offset here. A warp point's two times are read into each other's places, so the
    // read model has them exchanged.
    int64_t pluginParameterShift = 0;
    bool warpTimesExchanged = false;
    // Compares file references by the name behind their last "/" only: a read places media in
    // the client's folders, so full paths differ between two reads into different folders.
    bool fileLeafNamesOnly = false;
    // The format writes only the tempo's value: its bounds and id come from the reader's
    // defaults, so a model whose tempo never went through a document differs there.
    bool tempoValueOnly = false;
};

// Every difference between the two models, one line each; empty when they are equal.
std::vector<std::string> differences(Halvorn::IMediaProject* a, Halvorn::IMediaProject* b,
                                     const Options& options = {});

// A field's value as the differences quote it: enumerations by number, flags as 1 or 0, numbers
// with `digits` significant digits.
std::string valueText(const CorvelleSupport::FieldValue& value, int digits = 17);

// The differences as one text for a test's failure message.
std::string describe(const std::vector<std::string>& differences);

} // namespace ModelCompare
