// SPDX-License-Identifier: GPL-3.0-only
#include "export/print/BinaryData.h"

#include <gtest/gtest.h>
#include <juce_graphics/juce_graphics.h>

namespace
{

struct Icon
{
    const char* bytes;
    int size;
    int width;
    int height;
};

class EmbeddedIcons : public testing::TestWithParam<Icon>
{
};

TEST_P (EmbeddedIcons, arePicturesWithTransparency)
{
    const auto [bytes, size, width, height] = GetParam();
    const auto image = juce::ImageFileFormat::loadFrom (bytes, static_cast<std::size_t> (size));
    ASSERT_TRUE (image.isValid());
    EXPECT_EQ (image.getWidth(), width);
    EXPECT_EQ (image.getHeight(), height);

    // The head of the file: 8 bits for each of red, green, blue and transparency.
    EXPECT_EQ (std::string (bytes + 1, 3), "PNG");
    EXPECT_EQ (bytes[24], 8);
    EXPECT_EQ (bytes[25], 6);

    int opaque = 0, clear = 0;

    for (int x = 0; x < width; ++x)
        for (int y = 0; y < height; ++y)
            ++(image.getPixelAt (x, y).getAlpha() > 127 ? opaque : clear);

    EXPECT_GT (opaque, width * height / 10);
    EXPECT_GT (clear, width * height / 10);
}

INSTANTIATE_TEST_SUITE_P (BinaryData, EmbeddedIcons,
                          testing::Values (Icon { BinaryData::pdfexportcharactericon_png,
                                                  BinaryData::pdfexportcharactericon_pngSize, 140, 140 },
                                           Icon { BinaryData::pdfexportinpointicon_png,
                                                  BinaryData::pdfexportinpointicon_pngSize, 140, 117 },
                                           Icon { BinaryData::pdfexportoutpointicon_png,
                                                  BinaryData::pdfexportoutpointicon_pngSize, 140, 117 }));

} // namespace
