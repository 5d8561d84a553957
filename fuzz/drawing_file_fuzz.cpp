// Files that keep a display list: whatever the bytes, the whole list or nothing.
// Each input is tried as a file and, so that the readers behind the checksum see
// it too, as the payload of a file that is otherwise right.

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "displaylist/displaylist.h"
#include "files/drawing_file.h"
#include "fuzz/packing.h"
#include "fuzz/require.h"
#include "fuzz/use_list.h"

namespace {

void read(std::span<const std::byte> bytes) {
  files::Contents contents;
  const std::string problem = files::read_bytes(bytes, {}, contents);
  require(problem.empty() == (contents.list != nullptr));
  if (!problem.empty()) return;
  const std::size_t count = use_list(*contents.list).size();

  std::vector<std::byte> copy;
  require(files::write_bytes(copy, *contents.list, contents.properties).empty());
  files::Contents same;
  require(files::read_bytes(copy, {}, same).empty());
  require(use_list(*same.list).size() == count);
  std::vector<std::byte> second_copy;
  require(files::write_bytes(second_copy, *same.list, same.properties).empty());
  require(second_copy == copy);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto* first = reinterpret_cast<const std::byte*>(data);
  read({first, size});
  static const packing::Bytes model = [] {
    packing::Bytes file;
    DL::DisplayList list;
    require(files::write_bytes(file, list).empty());
    return file;
  }();
  read(packing::packed(packing::Bytes(first, first + size), model));
  return 0;
}
