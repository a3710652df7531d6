// SPDX-License-Identifier: GPL-3.0-only
#pragma once

/** The names that a Word document's parts know each other by. */
namespace DocxHandler::WordNames
{

inline constexpr auto main = "http://schemas.openxmlformats.org/wordprocessingml/2006/main";
inline constexpr auto relationships = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";
inline constexpr auto packageRelationships = "http://schemas.openxmlformats.org/package/2006/relationships";
inline constexpr auto contentTypes = "http://schemas.openxmlformats.org/package/2006/content-types";
inline constexpr auto wordDrawing = "http://schemas.openxmlformats.org/drawingml/2006/wordprocessingDrawing";
inline constexpr auto drawing = "http://schemas.openxmlformats.org/drawingml/2006/main";
inline constexpr auto picture = "http://schemas.openxmlformats.org/drawingml/2006/picture";

} // namespace DocxHandler::WordNames
