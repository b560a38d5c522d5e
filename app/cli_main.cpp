// parvenna-cli: the closure checker from a script.
#include <iostream>
#include <string>
#include <vector>

#include "app/cli/close_command.h"
#include "app/cli/drawing_command.h"
#include "app/cli/parcel_command.h"
#include "app/cli/report_command.h"
#include "ui/report_printer.h"

int main(int argc, char** argv) {
  std::vector<std::string> args(argv + 1, argv + argc);
  if (args.empty() || args[0] == "--help" || args[0] == "-h") {
    std::cout << "parvenna-cli COMMAND ...\n\ncommands:\n  close   walk a parcel and show its closure\n"
              << "  drawing list a drawing's layers, entities and texts\n"
              << "  pick    the text that a click at a drawing point finds\n"
              << "  report  the full, summary, picture or mapcheck report of a project\n"
              << "  parcel  list, show, add or delete the parcels of a project\n\n"
              << parvenna::cli::kCloseUsage << parvenna::cli::kDrawingUsage
              << parvenna::cli::kReportUsage << parvenna::cli::kParcelUsage;
    return args.empty() ? 2 : 0;
  }
  const std::string command = args[0];
  args.erase(args.begin());
  if (command == "close") return parvenna::cli::RunClose(args, std::cin, std::cout, std::cerr);
  if (command == "report") {
    return parvenna::cli::RunReport(args, std::cout, std::cerr, parvenna::ui::MakePdfPrinter);
  }
  if (command == "parcel") return parvenna::cli::RunParcel(args, std::cin, std::cout, std::cerr);
  if (command == "drawing") return parvenna::cli::RunDrawing(args, std::cout, std::cerr);
  if (command == "pick") return parvenna::cli::RunPick(args, std::cout, std::cerr);
  std::cerr << "parvenna-cli: unknown command \"" << command << "\"\n";
  return 2;
}
