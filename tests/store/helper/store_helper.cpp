// A second process for the store's tests.
//   store_test_helper hold APPDIR      holds the system store until stdin closes
//   store_test_helper open APPDIR      tries to hold it; prints what it was told
//   store_test_helper write PROJECT N  writes a parcel of N courses, a line per committed row
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <iostream>
#include <string>
#include <thread>

#include "store/store.h"
#include "store/system_store.h"

namespace {

class PrintingPrompter : public parvenna::Prompter {
 public:
  parvenna::MsgAnswer MsgBox(const parvenna::Message& message) override {
    std::cout << "box: " << message.Prompt << std::endl;
    return parvenna::MsgAnswer::OK;
  }
};

int Hold(const std::string& appDirectory, bool wait) {
  PrintingPrompter prompter;
  parvenna::store::SystemStore store(appDirectory);
  if (!store.Open(prompter)) return 3;
  std::cout << "held" << std::endl;
  if (wait) {
    std::string line;
    while (std::getline(std::cin, line)) {
    }
  }
  return 0;
}

int WriteParcel(const std::string& project, int courses) {
  using namespace parvenna::store;
  Database db = Database::Open(project);
  Recordset parcels = db.OpenRecordset("tblParcel");
  parcels.AddNew();
  parcels.Set("Parcel", "Killed lot");
  parcels.Set("Closure", 0.0);
  parcels.Update();
  parcels.Bookmark(parcels.LastModified());
  std::int32_t id = parcels.Get("ParcelID").AsLong();
  std::cout << "parcel " << id << std::endl;
  Recordset rows = db.OpenRecordset("tblMeasurements");
  for (int i = 0; i < courses; ++i) {
    rows.AddNew();
    rows.Set("parcelID", id);
    rows.Set("RowNo", i);
    rows.Set("RowType", 1);
    rows.Set("Length", 100.0 + i);
    rows.Set("Direction", "N12\u00B030'15\"E");
    rows.Update();
    std::cout << "row " << i << std::endl;
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
  }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) return 2;
  std::string mode = argv[1];
  try {
    if (mode == "hold") return Hold(argv[2], true);
    if (mode == "open") return Hold(argv[2], false);
    if (mode == "write" && argc >= 4) return WriteParcel(argv[2], std::stoi(argv[3]));
  } catch (const std::exception& e) {
    std::cout << "error: " << e.what() << std::endl;
    return 1;
  }
  return 2;
}
