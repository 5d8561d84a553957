#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <tuple>
#include <vector>

#include "importers/dxf/model.h"
#include "importers/dxf/plan.h"
#include "importers/importer.h"

namespace importers::dxf {

/// What was not drawn, and why.
struct LeftOut {
  std::size_t hidden = 0;      ///< entities that are invisible or in hidden layers
  std::size_t paper = 0;       ///< entities of paper space
  std::size_t endless = 0;     ///< inserts of blocks into themselves
  std::size_t too_deep = 0;    ///< inserts in too many others
  std::size_t too_many = 0;    ///< copies beyond the most that are made, or cut short
  std::size_t missing = 0;     ///< inserts of blocks that are not there
  std::size_t degenerate = 0;  ///< inserts and texts of no size, shapes too far away

  /// Of inserts that depend on what they stand in, or on what came before.
  [[nodiscard]] std::size_t refused() const { return endless + too_deep + too_many; }
};

/// Makes plans of a model: resolves what entities inherit, and puts blocks
/// where they are inserted. An insert along the axes is a plan of its own, any
/// other becomes copies of what is in its block.
class Composer {
 public:
  static constexpr std::size_t most_copies = 1250000;
  static constexpr std::size_t deepest = 128;

  /// Draws the layers of these indices only, or all where there are none.
  Composer(const Model& model, const ReadOptions& options, std::set<std::size_t> chosen);

  /// Of the model space or the paper space.
  [[nodiscard]] Plan compose(bool paper_space);
  [[nodiscard]] const LeftOut& left_out() const { return m_left_out; }
  /// The layers that something was drawn of, in the order of their first.
  [[nodiscard]] const std::vector<std::size_t>& layers() const { return m_layers; }

 private:
  /// Where entities stand, and what they inherit.
  struct Context {
    Affine affine;   ///< to the coordinates of the plan
    Affine to_root;  ///< of the plan's, to those of the drawing, but for the place
    std::size_t layer = 0;
    Pen pen;  ///< of the insert
    std::size_t depth = 0;
    Plan* plan = nullptr;
  };
  /// Plans of one block differ by these.
  using PlanKey = std::tuple<std::size_t, std::size_t, std::uint32_t, std::int32_t, double, double>;

  void add_all(const std::vector<Entity>& entities, const Context& context);
  void add_entity(const Entity& entity, const Context& context);
  void add_insert(const Insert& insert, const Context& inner);
  void add_copies(const Insert& insert, const Context& inner);
  void add_copy(const Insert& insert, const Context& inner);
  [[nodiscard]] std::shared_ptr<const Plan> plan_of(std::size_t block, const Context& inner);
  [[nodiscard]] bool is_hidden(const Entity& entity, std::size_t layer) const;
  [[nodiscard]] Pen pen_of(const Look& look, std::size_t layer, const Context& context) const;
  [[nodiscard]] LM_RGB32 color_of(const Look& look, const Layer& layer,
                                  const Context& context) const;
  void note_layer(std::size_t layer);

  const Model& m_model;
  const ReadOptions& m_options;
  std::set<std::size_t> m_chosen;
  std::vector<std::int32_t> m_patterns;  ///< of the line types
  LeftOut m_left_out;
  std::vector<std::size_t> m_layers;
  std::vector<bool> m_layer_is_used;
  std::vector<std::size_t> m_open_blocks;  ///< being inserted, outermost first
  std::map<PlanKey, std::shared_ptr<const Plan>> m_plans;
  std::size_t m_copies = 0;
  std::size_t m_limit = 0;  ///< of the copies, for the entity that is being drawn
};

}  // namespace importers::dxf
