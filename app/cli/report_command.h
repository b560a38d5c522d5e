#pragma once

#include <functional>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

#include "platform/printer.h"

namespace parvenna::cli {

// Makes the printer that writes a PDF file; the file is complete when the
// printer is destroyed.
using PdfPrinterFactory = std::function<std::unique_ptr<Printer>(const std::string& path)>;

// parvenna-cli report full|summary|picture|mapcheck PROJECT [options]: the
// closure reports of the report window, for scripts. The text is the preview's,
// byte for byte. Exit status 0; 1 when the project cannot be read, has no
// parcel, or the chosen parcel is not there; 2 for bad arguments.
// `appDirectory` is where the program's own files are; empty for the
// directory of the running program.
int RunReport(const std::vector<std::string>& args, std::ostream& out, std::ostream& err,
              const PdfPrinterFactory& pdfPrinter, const std::string& appDirectory = "");

inline constexpr const char* kReportUsage =
    "usage: parvenna-cli report full|summary|picture|mapcheck PROJECT.pvd [--filter all|pass|fail]\n"
    "         [--parcel NAME] [--out FILE] [--csv FILE] [--pdf FILE]\n"
    "         mapcheck only: [--ratio 10000] [--pob N,E] [--courses-csv FILE]\n"
    "  --out FILE  the report saved as \"Save as\" does: .txt plain text, .csv the CSV\n"
    "              rows (full report), any other name rich text; without it the text\n"
    "              goes to standard output\n"
    "  --csv FILE  the CSV rows of the full report; of the mapcheck, one row a parcel\n"
    "  --pdf FILE  the report printed to PDF (needed for picture); the mapcheck's pages\n"
    "              with the summary, a section and a sketch a parcel\n"
    "  --ratio N   the precision a parcel must reach to pass the mapcheck, 1:N\n"
    "  --pob N,E   the northing and easting of the point of beginning (default 0,0)\n"
    "  --courses-csv FILE  the mapcheck's courses, one row a course\n";

}  // namespace parvenna::cli
