#include "displaylist/platform/matrix.h"

#include <cmath>

void LM_Matrix::set_identity() {
  for (int i = 0; i < 3; ++i) {
    for (int j = 0; j < 4; ++j) m_rows[i][j] = i == j ? 1.0F : 0.0F;
  }
}

void LM_Matrix::rotate(int from, int to, float angle) {
  const float cosine = std::cos(angle);
  const float sine = std::sin(angle);
  for (int j = 0; j < 4; ++j) {
    const float a = m_rows[from][j];
    const float b = m_rows[to][j];
    m_rows[from][j] = cosine * a - sine * b;
    m_rows[to][j] = sine * a + cosine * b;
  }
}

void LM_Matrix::rotate_x(float angle) {
  rotate(1, 2, angle);
}

void LM_Matrix::rotate_y(float angle) {
  rotate(2, 0, angle);
}

void LM_Matrix::rotate_z(float angle) {
  rotate(0, 1, angle);
}

void LM_Matrix::translate(float x, float y, float z) {
  m_rows[0][3] += x;
  m_rows[1][3] += y;
  m_rows[2][3] += z;
}

void LM_Matrix::transform(LM_Point* points, std::int32_t count) const {
  for (std::int32_t i = 0; i < count; ++i) {
    const LM_Point p = points[i];
    const auto image = [&p](const float* row) {
      return row[0] * p.x + row[1] * p.y + row[2] * p.z + row[3];
    };
    points[i] = {image(m_rows[0]), image(m_rows[1]), image(m_rows[2])};
  }
}
