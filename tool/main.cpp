// The `morvane` command: its subcommands and their options.
#include <CLI/CLI.hpp>
#include <csignal>
#include <deque>
#include <iostream>
#include <new>

#include "commands.h"
#include "errors.h"
#include "names.h"
#include "output.h"

namespace {

using namespace morvane::tool;

// A check that the help does not spell out behind the option's name.
CLI::Validator quiet(const CLI::Validator& check) {
  return check.description("");
}

CLI::Validator at_least(long long least) {
  const auto test = [least](std::string& value) {
    long long number = 0;
    const bool fits = CLI::detail::lexical_cast(value, number) && number >= least;
    return fits ? std::string() : text(value, " is not a number of ", least, " or more");
  };
  return CLI::Validator(test, "");
}

CLI::App* add(CLI::App& app, const std::string& name, const std::string& what, const std::string& footer) {
  CLI::App* command = app.add_subcommand(name, what);
  command->footer(footer);
  return command;
}

void add_listings(CLI::App& app) {
  static listing_options formats;
  CLI::App* command = add(app, "formats", "List the pixel formats", "Example:\n  morvane formats NV12");
  command->add_option("name", formats.name, "Only those of this name, the library's own or that of another program")
      ->type_name("NAME");
  command->add_flag("--json", formats.json, "Print JSON");
  command->callback([] { list_formats(formats); });

  static listing_options conversions;
  command = add(app, "conversions", "List the conversions, copies and fills", "Example:\n  morvane conversions");
  command->add_flag("--json", conversions.json, "Print JSON");
  command->callback([] { list_conversions(conversions); });
}

void add_info(CLI::App& app) {
  static info_options o;
  CLI::App* command = add(app, "info", "Print the plane sizes, strides and frame bytes of a picture",
                          "The name of a file such as clip_1920x1080_uyvy.raw tells format and size where the options\n"
                          "do not.\n\n"
                          "Example:\n  morvane info -f v210 -s 1920x1080");
  command->add_option("FILE", o.file, "A file of such frames; its name or header may say what they are")->type_name("");
  command->add_option("-f,--format", o.format, "The format")->type_name("FORMAT");
  command->add_option("-s,--size", o.size, "Width and height in pixels")->type_name("WxH");
  command->add_flag("--json", o.json, "Print JSON");
  command->callback([] { info(o); });
}

// The two files of a command as the user names them: by position, or by a list of files, one for every plane, in place
// of either.
struct file_names {
  std::string first;
  std::string second;
  std::string first_planes;
  std::string second_planes;
};

// Sorts out which is which.
void take_files(const file_names& names, const char* first_label, file_list& first, const char* second_label,
                file_list& second) {
  std::deque<std::string> by_position;
  for (const std::string& name : {names.first, names.second})
    if (!name.empty()) by_position.push_back(name);
  const auto take = [&](const char* label, const std::string& planes) -> file_list {
    if (!planes.empty()) return parse_list(planes);
    if (by_position.empty()) wrong_arguments(label, " is required; see --help");
    const std::string name = by_position.front();
    by_position.pop_front();
    return {name};
  };
  first = take(first_label, names.first_planes);
  second = take(second_label, names.second_planes);
  if (!by_position.empty())
    wrong_arguments(by_position.front(), " is one file too many: a list of planes takes the place of a file");
}

void add_files(CLI::App& command, file_names& names, const char* first_label, const char* first_help,
               const char* second_label, const char* second_help) {
  command.add_option(first_label, names.first, first_help)->type_name("");
  command.add_option(second_label, names.second, second_help)->type_name("");
}

// Lets the option be given again, each time with one argument.
CLI::Option* one_at_a_time(CLI::Option* option) {
  return option->expected(1)->take_all()->allow_extra_args(false);
}

void add_strides(CLI::App& command, const std::string& name, stride_list& strides, const std::string& whose) {
  const std::string help = "Bytes from row to row in the planes " + whose + ", where they are not as usual";
  one_at_a_time(command.add_option(name, strides, help))->delimiter(',')->type_name("N,...");
}

constexpr const char* source_help = "Raw frames, a .y4m or a .png; - is standard input";
constexpr const char* sink_help = "Raw frames, a .y4m or a .png; - is standard output";

void add_convert_files(CLI::App& command, convert_options& o, file_names& names) {
  add_files(command, names, "IN", source_help, "OUT", sink_help);
  command.add_option("--planes,--src-planes", names.first_planes, "In place of IN: a file for every plane")
      ->type_name("A,B,...");
  command.add_option("--dst-planes", names.second_planes, "In place of OUT: a file for every plane")
      ->type_name("A,B,...");
  command
      .add_option("-f,--from", o.from,
                  "Format of IN; a PNG is bgra if it has alpha, else bgrx, and a .y4m says its own")
      ->type_name("FORMAT");
  command.add_option("-t,--to", o.to, "Format of OUT; without it a PNG is RGB, and a .y4m as IN or y_u_v_420")
      ->type_name("FORMAT");
  command.add_option("-s,--size", o.size, "Width and height in pixels; a PNG and a .y4m have their own")
      ->type_name("WxH");
  add_strides(command, "--src-stride", o.source_strides, "of IN");
  add_strides(command, "--dst-stride", o.destination_strides, "of OUT");
  command.add_option("--skip", o.skip, "Pass over the first N frames")->check(at_least(0))->type_name("N");
  command.add_option("--frames", o.frames, "Convert at most N frames")->check(at_least(1))->type_name("N");
}

// A choice between two words, of which the second is the one that is noted.
template <class Noted>
void add_choice(CLI::App& command, const std::string& name, Noted& is_second, const std::string& first,
                const std::string& second, const std::string& help) {
  const auto choose = [=, &is_second](const std::string& word) {
    if (word != first && word != second)
      throw CLI::ValidationError(name, text(word, " is neither ", first, " nor ", second));
    is_second = word == second;
  };
  command.add_option_function<std::string>(name, choose, help)->type_name(first + "|" + second);
}

void add_colours(CLI::App& command, colour_options& o) {
  command.add_option("--matrix", o.matrix, "Matrix of YCbCr pictures: bt601, bt709 (the default) or bt2020")
      ->type_name("NAME");
  command.add_option("--range", o.range, "Range of YCbCr pictures: video (the default) or full")->type_name("NAME");
  command.add_option("--rgb-range", o.rgb_range, "Range of RGB pictures: full (the default) or video")
      ->type_name("NAME");
  add_choice(command, "--chroma", o.nearest, "linear", "nearest", "How chroma is resampled");
  add_choice(command, "--siting", o.center, "left", "center", "Where the chroma of a pair of pixels is");
  command.add_option("--background", o.background, "Lay a picture with alpha over this where OUT has none")
      ->type_name("R,G,B");
}

// How frames are converted and written.
void add_output(CLI::App& command, output_options& o) {
  command.add_option("-j,--threads", o.threads, "Threads that share the conversion of a frame")
      ->check(quiet(CLI::Range(1, 256)))
      ->type_name("N");
  command.add_flag("--y4m", o.y4m, "Write YUV4MPEG2, whatever the name of OUT");
  command.add_flag("--keep", o.keep, "Leave the whole frames that were done when the input or the disk ends too early");
}

void add_convert(CLI::App& app) {
  static convert_options o;
  static file_names names;
  CLI::App* command =
      add(app, "convert", "Convert frames from one format to another",
          "Formats of several planes have them one after the other in every frame of a file, or each\n"
          "in a file of its own. 'morvane info' lists them in their order.\n\n"
          "An input that begins with YUV4MPEG2 needs no name ending in .y4m: without -f or without -s\n"
          "it is read as a .y4m. From one .y4m to another, what its first line says of rate, aspect and\n"
          "the like is handed on; words behind FRAME, which are for one frame alone, are dropped.\n\n"
          "Example (a frame of zeros, which is dark green):\n"
          "  morvane convert -f uyvy -t bgra -s 1920x1080 --frames 1 /dev/zero green.bgra\n\n"
          "Example (video and its alpha from two files into one):\n"
          "  morvane convert -f uyvy_a -t bgra -s 640x360 --frames 1 --planes /dev/zero,/dev/zero "
          "clear.bgra\n\n"
          "Example (luma, Cb and Cr into three files):\n"
          "  morvane convert -f uyvy -t y_u_v_420 -s 640x360 --frames 1 /dev/zero --dst-planes "
          "y.raw,cb.raw,cr.raw\n\n"
          "Example (YUV4MPEG2 through a pipe):\n"
          "  morvane convert -f uyvy -s 640x360 --frames 1 /dev/zero - --y4m | "
          "morvane convert - -t bgra green.bgra");
  add_convert_files(*command, o, names);
  add_colours(*command, o);
  command->add_option("--to-matrix", o.to_matrix, "Matrix of OUT, where it is another")->type_name("NAME");
  command->add_option("--to-range", o.to_range, "Range of OUT, where it is another")->type_name("NAME");
  command->add_option("--via", o.via, "A conversion of 'morvane conversions' to use instead of the rules")
      ->type_name("NAME");
  command->add_flag("--allow-irregular", o.allow_irregular, "Let it be an irregular one");
  command->add_flag("--rescale", o.rescale, "Have it stretch luma: keys to full range, grey to video range");
  command
      ->add_option("--stores", o.stores,
                   text("Store frames in memory through its caches (the default) or past them; by-size: past them\n"
                        "where bytes are only moved, and a frame has more than ",
                        MORVANE_MOST_CACHED >> 20, " MiB"))
      ->type_name("cached|streaming|by-size");
  command->add_option("--crop", o.crop, "Write only the top left of the result")->type_name("WxH");
  add_output(*command, o);
  command->add_flag("-v,--verbose", o.verbose, "Say which steps are taken and what they lose");
  command->add_flag("--time", o.time, "Print the speed, converting the first frame 20 times");
  command->callback([] {
    take_files(names, "IN", o.input, "OUT", o.output);
    convert(o);
  });
}

void add_pattern(CLI::App& app) {
  static pattern_options o;
  static file_names names;
  CLI::App* command = add(app, "pattern", "Write frames of a test pattern, in any format",
                          "bars   eight colour bars of 75 %: white, yellow, cyan, green, magenta, red, blue, black\n"
                          "ramp   from black to full brightness: grey, and below it red, green and blue\n"
                          "zone   rings around the centre that become finer towards the sides, and grow\n"
                          "key    an orange disc with a soft edge that swings to and fro; where its alpha is 0, the\n"
                          "       picture is blue\n\n"
                          "A format has of a pattern what it can hold: alpha is opaque but in key, and zone has no\n"
                          "chroma. A fill with its key carries alpha in the luma of the key.\n\n"
                          "Example:\n  morvane pattern bars -f v210 -s 1920x1080 bars.v210\n\n"
                          "Example (two seconds that every player shows):\n"
                          "  morvane pattern zone -s 640x360 --frames 50 zone.y4m\n\n"
                          "Example (what lies over red is seen through a pipe):\n"
                          "  morvane pattern key -f bgra -s 640x360 - | "
                          "morvane convert -f bgra -s 640x360 --background 255,0,0 - over.png -t rgbx");
  add_files(*command, names, "PATTERN", "bars, ramp, zone or key", "OUT", sink_help);
  command->add_option("--planes", names.second_planes, "In place of OUT: a file for every plane")->type_name("A,B,...");
  command->add_option("-f,--format", o.format, "Format of OUT; without it a PNG is RGB, and a .y4m y_u_v_420")
      ->type_name("FORMAT");
  command->add_option("-s,--size", o.size, "Width and height in pixels")->type_name("WxH");
  add_strides(*command, "--stride", o.destination_strides, "of OUT");
  command->add_option("--frames", o.frames, "Write N frames and not one")->check(at_least(1))->type_name("N");
  add_colours(*command, o);
  add_output(*command, o);
  command->callback([] {
    file_list pattern_name;
    take_files(names, "PATTERN", pattern_name, "OUT", o.output);
    o.name = pattern_name.front();
    pattern(o);
  });
}

void add_show(CLI::App& app) {
  static show_options o;
  static file_names names;
  CLI::App* command = add(app, "show", "Write one frame as a PNG, alpha over a checkerboard",
                          "Luma alone and alpha alone are grey; chroma alone has only its planes to show; of two\n"
                          "images in one, the first is shown.\n\n"
                          "--plane takes the name of a component, such as Y, Cb or A, or of a plane, which shows all\n"
                          "its samples side by side, or of both, such as key.Y. 'morvane info' lists them.\n\n"
                          "Example (a frame of zeros, which is dark green):\n"
                          "  morvane show /dev/zero -f uyvy -s 640x360 green.png\n\n"
                          "Example (video and its alpha from two files; all is transparent):\n"
                          "  morvane show --planes /dev/zero,/dev/zero -f uyvy_a -s 640x360 clear.png\n\n"
                          "Example (the dump of a card that fills its rows up to whole multiples of 128 bytes):\n"
                          "  head -c 2488320 /dev/zero > dump && "
                          "morvane show dump -f v210 -s 1280x720 --stride 3456 dump.png");
  add_files(*command, names, "IN", source_help, "OUT", "The picture, a .png");
  command->add_option("--planes", names.first_planes, "In place of IN: a file for every plane")->type_name("A,B,...");
  command->add_option("-f,--format", o.format, "Format of IN")->type_name("FORMAT");
  command->add_option("-s,--size", o.size, "Width and height in pixels")->type_name("WxH");
  add_strides(*command, "--stride", o.strides, "of IN");
  command->add_option("--frame", o.frame, "Number of the frame, from 0")->check(at_least(0))->type_name("N");
  command->add_option("--matrix", o.matrix, "Matrix of a YCbCr picture: bt601, bt709 (the default) or bt2020")
      ->type_name("NAME");
  command->add_option("--range", o.range, "Range of a YCbCr picture: video (the default) or full")->type_name("NAME");
  command->add_option("--plane", o.plane, "Show one component or plane in grey")->type_name("NAME");
  command->callback([] {
    file_list picture;
    take_files(names, "IN", o.input, "OUT", picture);
    o.output = picture.front();
    show(o);
  });
}

stride_list parse_strides(const std::string& list) {
  stride_list strides;
  for (const std::string& word : parse_list(list))
    if (!CLI::detail::lexical_cast(word, strides.emplace_back()))
      wrong_arguments("--stride: ", word, " is not a number of bytes; see --help");
  return strides;
}

// What is given for the two files of a comparison: once for both, or once for each.
void add_compared_frames(CLI::App& command, compare_options& o) {
  const std::string again = "; given again: of B";
  const auto add_strides = [&o](const std::vector<std::string>& lists) {
    for (const std::string& list : lists) o.strides.push_back(parse_strides(list));
    return true;
  };
  one_at_a_time(command.add_option("--stride", add_strides, "Bytes from row to row in the planes of both" + again))
      ->type_name("N,...");
  one_at_a_time(command.add_option("--skip", o.skips, "Pass over the first N frames of both" + again))
      ->check(at_least(0))
      ->type_name("N");
  command.add_option("--frames", o.frames, "Compare at most N frames")->check(at_least(1))->type_name("N");
}

void require_at_most_two(const char* option, std::size_t times) {
  if (times > 2) wrong_arguments(option, " is given ", times, " times, for two files");
}

void add_compare(CLI::App& app, int& exit_code) {
  static compare_options o;
  static file_names names;
  static std::vector<std::string> lists;
  CLI::App* command = add(app, "compare", "Compare two files of frames",
                          "Exits with 0 when they are identical, with 1 when they are not, and with 2 when they\n"
                          "cannot be compared. Unused bits and bytes, such as the fourth of bgrx, are not compared.\n\n"
                          "Floats are identical when all their bits are. How far they differ is measured between the\n"
                          "samples of 16 bits by which they are converted: Y from 0 to 1 is 4096 to 60160, Cb and Cr\n"
                          "from -0.5 to 0.5 are 4096 to 61440, and A from 0 to 1 is 0 to 65535; what lies outside\n"
                          "counts as the nearer end.\n\n"
                          "Example:\n"
                          "  head -c 65536 /dev/zero > a.raw && morvane compare a.raw a.raw -f uyvy -s 256x128\n\n"
                          "Example (the planes of one of them in files of their own):\n"
                          "  head -c 96 /dev/zero > a && head -c 64 a > y && head -c 32 a > cbcr && "
                          "morvane compare --planes y,cbcr a -f y_uv_420 -s 8x8");
  add_files(*command, names, "A", source_help, "B", source_help);
  one_at_a_time(
      command->add_option("--planes", lists, "In place of A, and when given again of B: a file for every plane"))
      ->type_name("A,B,...");
  command->add_option("-f,--format", o.format, "Format of both")->type_name("FORMAT");
  command->add_option("-s,--size", o.size, "Width and height in pixels")->type_name("WxH");
  add_compared_frames(*command, o);
  command->add_flag("--json", o.json, "Print JSON");
  command->callback([&exit_code] {
    if (!lists.empty()) names.first_planes = lists.front();
    if (lists.size() > 1) names.second_planes = lists[1];
    require_at_most_two("--planes", lists.size());
    require_at_most_two("--stride", o.strides.size());
    require_at_most_two("--skip", o.skips.size());
    take_files(names, "A", o.first, "B", o.second);
    exit_code = compare(o) ? 0 : 1;
  });
}

// The first line of a message; the parser's own may have more.
std::string first_line(const std::string& message) {
  return message.substr(0, message.find('\n'));
}

// Without this the parser would only say that a subcommand is missing.
void refuse_unknown_command(const CLI::App& app, const std::string& word) {
  if (word.starts_with("-")) return;
  const auto has_the_name = [&](const CLI::App* command) { return command->check_name(word); };
  if (app.get_subcommands(has_the_name).empty()) wrong_arguments("unknown command ", word, "; see --help");
}

int run(int argc, char** argv) {
  CLI::App app("Converts video frames between pixel formats, looks at them and compares them.", "morvane");
  int exit_code = 0;
  app.set_version_flag("--version", "morvane " MORVANE_VERSION);
  app.require_subcommand(1);
  app.footer("'morvane COMMAND --help' explains a command and gives an example.");
  app.get_formatter()->column_width(26);
  app.get_formatter()->label("REQUIRED", "");
  add_listings(app);
  add_info(app);
  add_convert(app);
  add_pattern(app);
  add_show(app);
  add_compare(app, exit_code);
  if (argc > 1) refuse_unknown_command(app, argv[1]);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& e) {
    if (e.get_exit_code() != 0) wrong_arguments(first_line(e.what()), "; see --help");
    app.exit(e);
  }
  flush_standard_output();
  return exit_code;
}

}  // namespace

int main(int argc, char** argv) {
  std::signal(SIGPIPE, SIG_IGN);
  // Of a comparison, 1 says that the files differ.
  const bool compares = argc > 1 && std::string_view(argv[1]) == "compare";
  try {
    return run(argc, argv);
  } catch (const interrupted& i) {
    say(i.what());
    std::signal(i.signal, SIG_DFL);
    std::raise(i.signal);
  } catch (const failure& f) {
    say(f.what());
    return compares && f.exit_code == exit_io ? exit_arguments : f.exit_code;
  } catch (const std::bad_alloc&) {
    say("there is not enough memory for frames of this size");
  } catch (const std::exception& e) {
    say(e.what());
  }
  return compares ? exit_arguments : exit_io;
}
