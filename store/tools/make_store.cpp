// Builds a store file from SQL text: the system store and the sample projects
// that the build puts beside the program.
//   parvenna_make_store OUT.pvs FIRST.sql [MORE.sql ...]
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "store/store.h"

int main(int argc, char** argv) {
  if (argc < 3) {
    std::fprintf(stderr, "usage: %s OUT FIRST.sql [MORE.sql ...]\n", argv[0]);
    return 2;
  }
  std::filesystem::path out = argv[1];
  std::filesystem::path partial = out;
  partial += ".partial";
  try {
    std::filesystem::remove(partial);
    {
      parvenna::store::Database db = parvenna::store::Database::Create(partial);
      for (int i = 2; i < argc; ++i) {
        std::ifstream in(argv[i], std::ios::binary);
        if (!in) throw std::runtime_error(std::string("cannot read ") + argv[i]);
        std::string sql((std::istreambuf_iterator<char>(in)), {});
        db.ExecuteScript(sql);
      }
    }
    std::filesystem::rename(partial, out);
  } catch (const std::exception& e) {
    std::fprintf(stderr, "%s: %s\n", out.string().c_str(), e.what());
    std::filesystem::remove(partial);
    return 1;
  }
  return 0;
}
