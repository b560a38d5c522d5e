#pragma once

#include "platform/printer.h"
#include "reports/mapcheck_text.h"

namespace parvenna::reports {

// The mapcheck on paper, one document: the summary of all parcels on the
// first page, then each parcel on pages of its own with its courses, its
// closure, its sketch and its findings. Every page ends in "Page x of y";
// a page that goes on with a parcel says so at its top, and over course rows
// their heads are printed again. Returns the number of pages.
int PrintMapcheck(const MapcheckDocument& document, Printer& printer);

}  // namespace parvenna::reports
