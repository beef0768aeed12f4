// The functions of the stand-in for vImage, and the record of their calls.
#include "vimage.h"

#include <condition_variable>
#include <cstring>
#include <mutex>
#include <type_traits>
#include <utility>

struct vImage_YpCbCrToARGBMatrix {
  const char* name;
};

struct vImage_ARGBToYpCbCrMatrix {
  const char* name;
};

namespace morvane::tests::vimage {
namespace {

constexpr vImage_YpCbCrToARGBMatrix to_argb_601{"kvImage_YpCbCrToARGBMatrix_ITU_R_601_4"};
constexpr vImage_YpCbCrToARGBMatrix to_argb_709{"kvImage_YpCbCrToARGBMatrix_ITU_R_709_2"};
constexpr vImage_ARGBToYpCbCrMatrix to_ypcbcr_601{"kvImage_ARGBToYpCbCrMatrix_ITU_R_601_4"};
constexpr vImage_ARGBToYpCbCrMatrix to_ypcbcr_709{"kvImage_ARGBToYpCbCrMatrix_ITU_R_709_2"};

constexpr vImage_Error no_error = 0;
constexpr vImage_Error invalid_parameter = -21773;

std::mutex mutex;  // guards all below
std::condition_variable changed;
std::vector<generation> all_generations;
std::vector<conversion> all_conversions;
vImage_Error answer = no_error;
std::string held_matrix;
bool held_has_begun = false;

// A generated descriptor holds the address of its matrix' name. Descriptors are written and read without the mutex, for
// it would order what the library has to order itself, and hide its mistakes from the thread sanitizer.
template <class Descriptor>
void write_name(Descriptor& descriptor, const char* name) {
  std::memcpy(descriptor.opaque, &name, sizeof name);
}

template <class Descriptor>
std::string read_name(const Descriptor& descriptor) {
  const char* name;
  std::memcpy(&name, descriptor.opaque, sizeof name);
  return name == nullptr ? "" : name;
}

vImage_Error record(generation call) {
  std::unique_lock lock(mutex);
  const std::string matrix = call.matrix;
  all_generations.push_back(std::move(call));
  if (matrix == held_matrix) {
    held_has_begun = true;
    changed.notify_all();
    changed.wait(lock, [&] { return matrix != held_matrix; });
  }
  return answer;
}

vImage_Error record(conversion call) {
  const std::lock_guard lock(mutex);
  all_conversions.push_back(std::move(call));
  return answer;
}

template <class Matrix, class Descriptor>
vImage_Error generate(const char* function, const Matrix& matrix, const vImage_YpCbCrPixelRange& r,
                      Descriptor& descriptor, vImageYpCbCrType ypcbcr_type, vImageARGBType argb_type,
                      vImage_Flags flags) {
  const vImage_Error result =
      record(generation{function,
                        matrix.name,
                        {r.Yp_bias, r.CbCr_bias, r.YpRangeMax, r.CbCrRangeMax, r.YpMax, r.YpMin, r.CbCrMax, r.CbCrMin},
                        ypcbcr_type,
                        argb_type,
                        flags});
  if (result == no_error) write_name(descriptor, matrix.name);
  return result;
}

buffer read(const vImage_Buffer& b) {
  return {b.data, static_cast<std::int64_t>(b.height), static_cast<std::int64_t>(b.width),
          static_cast<std::int64_t>(b.rowBytes)};
}

template <class Descriptor>
vImage_Error convert(const char* function, const vImage_Buffer& source, const vImage_Buffer& destination,
                     const Descriptor& descriptor, const std::uint8_t* map, int alpha, vImage_Flags flags) {
  return record(conversion{function,
                           read_name(descriptor),
                           read(source),
                           read(destination),
                           {map[0], map[1], map[2], map[3]},
                           alpha,
                           flags});
}

std::ostream& operator<<(std::ostream& out, const buffer& b) {
  return out << b.data << " height " << b.height << " width " << b.width << " row bytes " << b.row_bytes;
}

template <class List>
void print(std::ostream& out, const char* title, const List& numbers) {
  out << title;
  for (const int number : numbers) out << ' ' << number;
}

}  // namespace

std::ostream& operator<<(std::ostream& out, const generation& call) {
  out << call.function << ' ' << call.matrix;
  print(out, ", range", call.range);
  return out << ", types " << call.ypcbcr_type << ' ' << call.argb_type << ", flags " << call.flags;
}

std::ostream& operator<<(std::ostream& out, const conversion& call) {
  out << call.function << " [" << call.matrix << "], from " << call.source << ", to " << call.destination;
  print(out, ", map", call.permute_map);
  return out << ", alpha " << call.alpha << ", flags " << call.flags;
}

std::vector<generation> generations() {
  const std::lock_guard lock(mutex);
  return all_generations;
}

std::vector<conversion> conversions() {
  const std::lock_guard lock(mutex);
  return all_conversions;
}

void refuse() {
  const std::lock_guard lock(mutex);
  answer = invalid_parameter;
}

held_generation::held_generation(std::string matrix) {
  const std::lock_guard lock(mutex);
  held_matrix = std::move(matrix);
  held_has_begun = false;
}

held_generation::~held_generation() {
  const std::lock_guard lock(mutex);
  held_matrix.clear();
  changed.notify_all();
}

void held_generation::wait_until_begun() {
  std::unique_lock lock(mutex);
  changed.wait(lock, [] { return held_has_begun; });
}

}  // namespace morvane::tests::vimage

using namespace morvane::tests;

const vImage_YpCbCrToARGBMatrix* kvImage_YpCbCrToARGBMatrix_ITU_R_601_4 = &vimage::to_argb_601;
const vImage_YpCbCrToARGBMatrix* kvImage_YpCbCrToARGBMatrix_ITU_R_709_2 = &vimage::to_argb_709;
const vImage_ARGBToYpCbCrMatrix* kvImage_ARGBToYpCbCrMatrix_ITU_R_601_4 = &vimage::to_ypcbcr_601;
const vImage_ARGBToYpCbCrMatrix* kvImage_ARGBToYpCbCrMatrix_ITU_R_709_2 = &vimage::to_ypcbcr_709;

vImage_Error vImageConvert_YpCbCrToARGB_GenerateConversion(const vImage_YpCbCrToARGBMatrix* matrix,
                                                           const vImage_YpCbCrPixelRange* pixelRange,
                                                           vImage_YpCbCrToARGB* outInfo, vImageYpCbCrType inYpCbCrType,
                                                           vImageARGBType outARGBType, vImage_Flags flags) {
  return vimage::generate(__func__, *matrix, *pixelRange, *outInfo, inYpCbCrType, outARGBType, flags);
}

vImage_Error vImageConvert_ARGBToYpCbCr_GenerateConversion(const vImage_ARGBToYpCbCrMatrix* matrix,
                                                           const vImage_YpCbCrPixelRange* pixelRange,
                                                           vImage_ARGBToYpCbCr* outInfo, vImageARGBType inARGBType,
                                                           vImageYpCbCrType outYpCbCrType, vImage_Flags flags) {
  return vimage::generate(__func__, *matrix, *pixelRange, *outInfo, outYpCbCrType, inARGBType, flags);
}

vImage_Error vImageConvert_422CbYpCrYp8ToARGB8888(const vImage_Buffer* src, const vImage_Buffer* dest,
                                                  const vImage_YpCbCrToARGB* info, const std::uint8_t permuteMap[4],
                                                  Pixel_8 alpha, vImage_Flags flags) {
  return vimage::convert(__func__, *src, *dest, *info, permuteMap, alpha, flags);
}

vImage_Error vImageConvert_ARGB8888To422CbYpCrYp8(const vImage_Buffer* src, const vImage_Buffer* dest,
                                                  const vImage_ARGBToYpCbCr* info, const std::uint8_t permuteMap[4],
                                                  vImage_Flags flags) {
  return vimage::convert(__func__, *src, *dest, *info, permuteMap, vimage::no_alpha, flags);
}
