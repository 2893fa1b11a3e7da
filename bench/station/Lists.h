// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <initializer_list>
#include <vector>

namespace Corvane::Bench
{

/// The elements of all lists, one list after the other.
template <typename T>
std::vector<T> Concatenated(std::initializer_list<std::vector<T>> lists)
{
    std::vector<T> all;
    for (const std::vector<T>& list : lists) {
        all.insert(all.end(), list.begin(), list.end());
    }
    return all;
}

} // namespace Corvane::Bench
