#pragma once

#include "tests/support/client_drawables.h"

/// A mark whose record has a tag that is free for clients.
class KeptMark : public client::Mark {
 public:
  static constexpr std::uint32_t kTag = 0x40010001;
  using Mark::Mark;

  void serialize_out(ZtFsStream* stream, DL::DisplayList& list) override {
    client::write(*stream, kTag);
    client::write(*stream, m_value);
    Drawable::serialize_out(stream, list);
  }
  void serialize_in(ZtFsStream* stream, DL::DisplayList& list) override {
    m_value = client::read(*stream);
    Drawable::serialize_in(stream, list);
  }
};
