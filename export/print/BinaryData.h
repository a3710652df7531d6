// SPDX-License-Identifier: GPL-3.0-only
#pragma once

#include "ZEP_Overmarks/Export.h"

/** The icons of a cue as PNG data, 8 bits a channel with transparency, so that a drawn sheet needs no files beside it. */
namespace BinaryData
{

/** 140 by 140 pixels. */
extern OVERMARKS_API const char* const pdfexportcharactericon_png;
extern OVERMARKS_API const int pdfexportcharactericon_pngSize; ///< bytes

/** 140 by 117 pixels. */
extern OVERMARKS_API const char* const pdfexportinpointicon_png;
extern OVERMARKS_API const int pdfexportinpointicon_pngSize; ///< bytes

/** 140 by 117 pixels. */
extern OVERMARKS_API const char* const pdfexportoutpointicon_png;
extern OVERMARKS_API const int pdfexportoutpointicon_pngSize; ///< bytes

} // namespace BinaryData
