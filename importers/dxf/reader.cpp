#include "importers/dxf/reader.h"

#include <algorithm>
#include <array>

#include "importers/dxf/feeder.h"
#include "importers/dxf/pairs.h"
#include "importers/dxf/receiver.h"

namespace importers::dxf {

namespace {

constexpr std::size_t records_between_questions = 4096;

/// Reads records, of which the pair of code 0 of the next one tells the end.
class RecordReader {
 public:
  explicit RecordReader(std::istream& stream) : m_pairs(stream) {}

  /// False at the end and where the file is damaged.
  bool next(Record& record) {
    if (!m_has_next && !find_first()) return false;
    record.name = upper_case(trimmed(m_next.value));
    record.pairs.clear();
    m_has_next = false;
    // What follows the mark of an embedded object is not of the record itself.
    constexpr int embedded_object = 101;
    bool is_own = true;
    while (m_pairs.next(m_next)) {
      m_has_next = m_next.code == 0;
      if (m_has_next) break;
      is_own = is_own && m_next.code != embedded_object;
      if (is_own) record.pairs.push_back(m_next);
    }
    return true;
  }
  [[nodiscard]] std::string problem() const { return m_pairs.problem(); }
  [[nodiscard]] std::size_t cut_lines() const { return m_pairs.cut_lines(); }

 private:
  bool find_first() {
    constexpr int comment = 999;
    while (m_pairs.next(m_next)) {
      if (m_next.code == 0) return true;
      if (m_next.code != comment) return false;
    }
    return false;
  }

  PairReader m_pairs;
  Pair m_next;
  bool m_has_next = false;
};

/// Keeps the sections apart and hands on what is in them.
class FileReader {
 public:
  explicit FileReader(Model& model) : m_receiver(model), m_feeder(m_receiver), m_model(model) {}

  void take(const Record& record) {
    if (record.name == "SECTION") {
      const std::string* name = record.find(2);
      m_section = name == nullptr ? "" : upper_case(trimmed(*name));
      m_has_sections = true;
      if (m_section == "HEADER") read_header(record);
    } else if (record.name == "ENDSEC" || record.name == "EOF") {
      m_feeder.flush();
      m_receiver.end_block();
      m_section.clear();
      m_model.has_end = m_model.has_end || record.name == "EOF";
    } else if (m_section == "TABLES") {
      m_feeder.feed_definition(record);
    } else if (m_section == "BLOCKS" || m_section == "ENTITIES") {
      m_receiver.begin_entities(m_section == "BLOCKS");
      m_feeder.feed_entity(record);
    }
  }

  void end() { m_feeder.flush(); }
  [[nodiscard]] bool has_sections() const { return m_has_sections; }

 private:
  void read_header(const Record& record) {
    for (std::size_t i = 0; i + 1 < record.pairs.size(); ++i) {
      if (record.pairs[i].code != 9) continue;
      const std::string& name = record.pairs[i].value;
      const std::string& value = record.pairs[i + 1].value;
      if (name == "$ACADVER") m_receiver.decoder().set_version(value);
      if (name == "$DWGCODEPAGE") m_receiver.decoder().set_code_page(value);
      if (name == "$DIMTXT") read_size(value, m_model.dimensions.text);
      if (name == "$DIMASZ") read_size(value, m_model.dimensions.arrow);
      if (name == "$DIMSCALE") read_size(value, m_model.dimensions.scale);
    }
  }

  /// Leaves the size as it is where the text is none.
  static void read_size(std::string_view text, double& size) {
    const double value = to_real(text).value_or(0);
    if (value > 0 && value <= Sketch::largest_coordinate) size = value;
  }

  Receiver m_receiver;
  Feeder m_feeder;
  Model& m_model;
  std::string m_section;
  bool m_has_sections = false;
};

bool is_binary(std::istream& stream) {
  constexpr std::string_view mark = "AutoCAD Binary DXF";
  std::array<char, mark.size()> start{};
  stream.read(start.data(), start.size());
  const bool result = std::string_view(start.data(), start.size()) == mark;
  stream.clear();
  stream.seekg(0);
  return result;
}

}  // namespace

std::string read(std::istream& stream, Model& model,
                 const std::function<bool(std::size_t)>& keep_on) {
  if (is_binary(stream)) return "it is a binary DXF; save it as a text DXF";
  RecordReader records(stream);
  FileReader file(model);
  Record record;
  std::size_t count = 0;
  while (!model.has_end && records.next(record)) {
    if (++count % records_between_questions == 0 && !keep_on(count)) {
      return "reading was cancelled";
    }
    if (!records.problem().empty()) break;
    file.take(record);
  }
  file.end();
  model.cut_lines = records.cut_lines();
  if (count == 0 || (!file.has_sections() && records.problem().empty())) {
    return "it is no DXF file, whatever its name; check where it comes from";
  }
  if (!records.problem().empty()) {
    return records.problem() + "; check that the file is complete";
  }
  return {};
}

}  // namespace importers::dxf
