#pragma once

#include <filesystem>
#include <string>

#include "store/store.h"
#include "tests/store/temp_dir.h"

namespace parvenna::ui::testing {

// A program directory of its own, with the supplied store, the sample
// project and its drawing beside it, past its first run.
class ProgramDir : public parvenna::testing::TempDir {
 public:
  ProgramDir() {
    parvenna::testing::CopySupplied(path(), {"ParvennaPro.pvs", "sample_feet.pvd", "sample_feet.dxf"});
    store::Database::Open(path() / "ParvennaPro.pvs").Execute("UPDATE tblSetting SET FirstRun = 0");
  }

  std::string Sample() const { return (path() / "sample_feet.pvd").string(); }
};

}  // namespace parvenna::ui::testing
