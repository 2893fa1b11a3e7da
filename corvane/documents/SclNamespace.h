// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace Corvane::Internal
{

/// The target namespace of SCL, IEC 61850-6.
constexpr const char* g_szSclNamespace = "http://www.iec.ch/61850/2003/SCL";
/// The namespace of XML Schema instances.
constexpr const char* g_szXsiNamespace = "http://www.w3.org/2001/XMLSchema-instance";

} // namespace Corvane::Internal
