// A stand-in for the header of Apple's Accelerate framework: the declarations of vImage that the library uses. With it
// the code for Apple systems is compiled where that framework does not exist; vimage.cpp answers the calls.
#pragma once

#include <cstddef>
#include <cstdint>

extern "C" {

using vImage_Error = std::ptrdiff_t;
using vImage_Flags = std::uint32_t;
using vImagePixelCount = unsigned long;
using Pixel_8 = std::uint8_t;

enum { kvImageNoFlags = 0 };
enum vImageARGBType { kvImageARGB8888 = 0 };
enum vImageYpCbCrType { kvImage422CbYpCrYp8 = 0, kvImage422YpCbYpCr8 = 1 };

struct vImage_Buffer {
  void* data;
  vImagePixelCount height;
  vImagePixelCount width;
  std::size_t rowBytes;
};

struct vImage_YpCbCrPixelRange {
  std::int32_t Yp_bias;
  std::int32_t CbCr_bias;
  std::int32_t YpRangeMax;
  std::int32_t CbCrRangeMax;
  std::int32_t YpMax;
  std::int32_t YpMin;
  std::int32_t CbCrMax;
  std::int32_t CbCrMin;
};

struct vImage_YpCbCrToARGBMatrix;
struct vImage_ARGBToYpCbCrMatrix;

extern const vImage_YpCbCrToARGBMatrix* kvImage_YpCbCrToARGBMatrix_ITU_R_601_4;
extern const vImage_YpCbCrToARGBMatrix* kvImage_YpCbCrToARGBMatrix_ITU_R_709_2;
extern const vImage_ARGBToYpCbCrMatrix* kvImage_ARGBToYpCbCrMatrix_ITU_R_601_4;
extern const vImage_ARGBToYpCbCrMatrix* kvImage_ARGBToYpCbCrMatrix_ITU_R_709_2;

struct vImage_YpCbCrToARGB {
  alignas(16) std::uint8_t opaque[128];
};

struct vImage_ARGBToYpCbCr {
  alignas(16) std::uint8_t opaque[128];
};

vImage_Error vImageConvert_YpCbCrToARGB_GenerateConversion(const vImage_YpCbCrToARGBMatrix* matrix,
                                                           const vImage_YpCbCrPixelRange* pixelRange,
                                                           vImage_YpCbCrToARGB* outInfo, vImageYpCbCrType inYpCbCrType,
                                                           vImageARGBType outARGBType, vImage_Flags flags);

vImage_Error vImageConvert_ARGBToYpCbCr_GenerateConversion(const vImage_ARGBToYpCbCrMatrix* matrix,
                                                           const vImage_YpCbCrPixelRange* pixelRange,
                                                           vImage_ARGBToYpCbCr* outInfo, vImageARGBType inARGBType,
                                                           vImageYpCbCrType outYpCbCrType, vImage_Flags flags);

vImage_Error vImageConvert_422CbYpCrYp8ToARGB8888(const vImage_Buffer* src, const vImage_Buffer* dest,
                                                  const vImage_YpCbCrToARGB* info, const std::uint8_t permuteMap[4],
                                                  Pixel_8 alpha, vImage_Flags flags);

vImage_Error vImageConvert_ARGB8888To422CbYpCrYp8(const vImage_Buffer* src, const vImage_Buffer* dest,
                                                  const vImage_ARGBToYpCbCr* info, const std::uint8_t permuteMap[4],
                                                  vImage_Flags flags);
}
