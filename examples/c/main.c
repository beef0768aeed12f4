#include <morvane.h>
#include <stdio.h>

/* Two pixels of 8-bit 4:2:2 to RGB. */
int main(void) {
  uint8_t video[] = {128, 16, 128, 235}; /* black and white */
  uint8_t rgba[8];
  const morvane_description from = {sizeof from, morvane_format_named("uyvy"), 2, 1, 0, 0};
  const morvane_description to = {sizeof to, morvane_format_named("rgba"), 2, 1, 0, 0};
  const morvane_picture source = {sizeof source, {video}, {4}, {sizeof video}};
  const morvane_picture result = {sizeof result, {rgba}, {8}, {sizeof rgba}};
  morvane_error error;

  if (morvane_convert(&from, &source, &to, &result, NULL, &error) != MORVANE_OK) {
    fprintf(stderr, "%s\n", error.message);
    return 1;
  }
  printf("black is %d %d %d, white is %d %d %d\n", rgba[0], rgba[1], rgba[2], rgba[4], rgba[5], rgba[6]);
  return 0;
}
