#pragma once

#include <cstddef>
#include <vector>

namespace platform {

/// A rectangle of values reached by row and column, both from 0. Index order is (row, column), as
/// the map files store it.
template <typename T>
class Grid
{
public:
    Grid() = default;
    Grid(int rows, int columns, const T& value = T{})
        : rows_(rows),
          columns_(columns),
          cells_(static_cast<std::size_t>(rows) * static_cast<std::size_t>(columns), value)
    {
    }

    int rows() const { return rows_; }
    int columns() const { return columns_; }
    bool contains(int row, int column) const
    {
        return row >= 0 && row < rows_ && column >= 0 && column < columns_;
    }

    T& operator()(int row, int column) { return cells_[index(row, column)]; }
    const T& operator()(int row, int column) const { return cells_[index(row, column)]; }

    /// All cells in row-major order.
    auto begin() { return cells_.begin(); }
    auto end() { return cells_.end(); }
    auto begin() const { return cells_.begin(); }
    auto end() const { return cells_.end(); }

    bool operator==(const Grid&) const = default;

private:
    std::size_t index(int row, int column) const
    {
        return static_cast<std::size_t>(row) * static_cast<std::size_t>(columns_) +
               static_cast<std::size_t>(column);
    }

    int rows_ = 0;
    int columns_ = 0;
    std::vector<T> cells_;
};

} // namespace platform
