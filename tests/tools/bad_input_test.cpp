// What the user gets wrong: one line that says so, a status of 2 where the command line alone is wrong and of 1 where the
// files are, and nothing changed in the folder.
#include "program.h"

#include <algorithm>

namespace test
{
namespace
{
struct Mistake
{
    const char* name;
    const char* arguments;
    const char* says; // a part of the line
};

const Mistake usageErrors[] = {
    {"nothing", "", "nothing to do"},
    {"unknownOperation", "nonsense in.png -o out.png", "unknown operation 'nonsense'"},
    {"nearlyRight", "brigthness in.png -o out.png", "did you mean brightness"},
    {"noInput", "invert -o out.png", "IN is required"},
    {"noOutput", "invert in.png", "--output is required"},
    {"folderNotAskedFor", "invert in.png small.png -o new.png", "write 'new.png/'"},
    {"sameResult", "invert in.png ./in.png -o new/", "'in.png' and './in.png' would both become 'new/in.png'"},
    {"replacesInput", "invert in.png small.png -o .", "the result would replace 'in.png'"},
    {"formatOfFile", "invert in.png -o new.png --format jpg", "--format goes with a folder"},
    {"unknownFormatInFolder", "invert in.png -o new/ --format gif", "gif"},
    {"unknownOption", "invert in.png -o out.png --strength 3", "--strength"},
    {"tooHigh", "brightness in.png -o out.png --offset 256", "--offset: 256 is out of range, -255 to 255"},
    {"tooLow", "brightness in.png -o out.png --offset -256", "out of range"},
    {"beyondNumbers", "contrast in.png -o out.png --contrast 1e999", "is not a number"},
    {"notANumber", "contrast in.png -o out.png --contrast nan", "is not a number"},
    {"word", "contrast in.png -o out.png --contrast high", "'high' is not a number"},
    {"trailingText", "brightness in.png -o out.png --offset 12px", "'12px' is not a number"},
    {"fraction", "brightness in.png -o out.png --offset 1.5", "'1.5' is not a whole number"},
    {"noValue", "brightness in.png -o out.png --offset", "--offset needs one value"},
    {"wrongChoice", "lab-channels in.png -o out.png --channel c", "'c' is none of L|a|b"},
    {"colourWord", "edge-map in.png -o out.png --edges black", "'black' is not a colour of the form rrggbb"},
    {"colourDigits", "edge-map in.png -o out.png --edges 00ff0g", "'00ff0g' is not a colour"},
    {"pointWithoutComma", "curves in.png -o out.png --curve 12", "'12' is not a point of the form x,y"},
    {"halfPoint", "curves in.png -o out.png --curve \"0,0 12,\"", "'12,' is not a point"},
    {"noPoints", "curves in.png -o out.png --curve \" \"", "--curve: the value is empty"},
    {"tooManyPoints", "gamma in.png -o out.png --pick \"1,1 2,2\"", "2 points, where 0 to 1 are wanted"},
    {"noStroke", "paint in.png -o out.png --stroke \"\"", "--stroke: the value is empty"},
    {"noStrokeButBlanks", "retouch in.png -o out.png --stroke \" \"", "--stroke: the value is empty"},
    {"noNumber", "carve in.png -o out.png --width \"\"", "--width: the value is empty"},
    {"noPicture", "gamma in.png -o out.png --pick 1,1 --weight \"\"", "--weight: the value is empty"},
    {"noSelection", "invert in.png -o out.png --selection \"\"", "--selection: the value is empty"},
    {"pointBeyondLevels", "curves in.png -o out.png --red 12,256", "--red: levels go from 0 to 255"},
    {"pointsAtOneLevel", "lab-curves in.png -o out.png --a \"9,1 9,2\"", "--a: two points at the same level"},
    {"pickOutside", "gamma in.png -o out.png --pick 30,5", "--pick: the point is outside the picture"},
    {"blackAboveWhite", "levels in.png -o out.png --black 99 --white 99", "--black has to be less than --white"},
    {"pointWord", "clone in.png -o out.png --stroke in.png --offset left", "'left' is not a point of the form x,y"},
    {"fadeNowhere", "fade-linear in.png -o out.png --from 3,4 --to 3,4", "--from and --to are the same place"},
    {"softeningRadius", "unsharp in.png -o out.png --blur box --radius 11", "11 is more than half of 30 x 20"},
    {"radiusForSize", "box-blur in.png -o out.png --radius 11", "11 is more than half of 30 x 20"},
    {"secondPictureMissing", "cut-out in.png -o out.png", "--shape is required"},
    {"selectionNotTaken", "cut-out in.png -o out.png --shape in.png --selection in.png", "--selection"},
    {"noWidth", "carve in.png -o out.png --width 0", "--width: 0 is out of range"},
    {"tooWide", "carve in.png -o out.png --width 61", "--width: 61 is more than twice the 30"},
    {"nothingToCarve", "carve in.png -o out.png", "neither a size is given nor anything to remove"},
    {"noDrawing", "trace in.png -o out.png", "must end in .svg"},
    {"neitherNumberNorWord", "thin in.png -o out.png --thin soon", "'soon' is not a number"},
    {"unknownFormat", "invert in.png -o out.gif", "must end in .png"},
};

const Mistake failures[] = {
    {"severalIntoFile", "invert in.png small.png -o out.png",
     "'out.png': it is not a folder, which several inputs need"},
    {"fileAsFolder", "invert in.png -o out.png/", "'out.png': it is not a folder"},
    {"selectionMissingForAll", "invert in.png small.png -o new --selection absent.png", "'absent.png'"},
    {"missingFile", "invert absent.png -o out.png", "'absent.png': No such file"},
    {"emptyFile", "invert empty.png -o out.png", "'empty.png': the file is empty"},
    {"otherFile", "invert text.png -o out.png", "'text.png': it is neither PNG nor JPEG"},
    {"folderAsInput", "invert folder.png -o out.png", "'folder.png': it is a folder"},
    {"cutPng", "invert cut.png -o out.png", "'cut.png': the file is cut short"},
    {"cutInHeader", "invert header.png -o out.png", "'header.png': the file is cut short"},
    {"endMissing", "invert noend.png -o out.png", "'noend.png': the file is cut short"},
    {"damagedPng", "invert damaged.png -o out.png", "'damaged.png'"},
    {"cutJpeg", "invert cut.jpg -o out.png", "'cut.jpg': Premature end"},
    {"hugePng", "invert huge.png -o out.png", "'huge.png': it is too large"},
    {"maskSize", "mask-apply in.png -o out.png --mask small.png", "it is 3 x 2, the picture is 30 x 20"},
    {"selectionSize", "grey in.png -o out.png --selection small.png", "'small.png' is 3 x 2, 'in.png' is 30 x 20"},
    {"selectionMissing", "grey in.png -o out.png --selection absent.png", "'absent.png'"},
    {"secondPictureSize", "cut-out in.png -o out.png --shape small.png", "the sizes differ"},
    {"allGivenAway", "carve in.png -o out.png --remove all.png", "nothing would be left"},
    {"noFolder", "invert in.png -o nowhere/out.png", "there is no folder 'nowhere'"},
    {"folderAsOutput", "tone-table -o folder.png", "'folder.png': it is a folder"},
    {"diskFull", "invert in.png -o full.png", "'full.png': No space left"},
    {"sceneNowhere", "scene -o nowhere/scene.png", "nowhere"},
    {"galleryNowhere", "gallery -o nowhere/gallery", "nowhere"},
    {"galleryTooSmall", "gallery in.png -o gallery", "at least 64 x 64"},
};

class BadInput : public InFolder, public testing::WithParamInterface<Mistake>
{
protected:
    BadInput()
    {
        writePng("in.png", pattern(30, 20));
        writePng("small.png", pattern(3, 2));
        writePng("all.png", Picture{30, 20, std::vector<uint8_t>(30 * 20 * 4, 255)});
        const std::string png = readText("in.png");
        writeText("out.png", "what was there before");
        writeText("empty.png", "");
        writeText("text.png", "not a picture at all");
        writeText("cut.png", png.substr(0, png.size() / 2));
        writeText("header.png", png.substr(0, 20));
        writeText("noend.png", png.substr(0, png.size() - 12));
        std::string damaged = png;
        damaged[png.size() / 2] ^= 1;
        writeText("damaged.png", damaged);
        // 65535 x 65535 pixels, the largest that a small file can claim; the check sum is that of this header.
        writeText("huge.png", png.substr(0, 8) +
                                  std::string("\0\0\0\rIHDR\0\0\xff\xff\0\0\xff\xff\x08\x06\0\0\0"
                                              "\xb6\x05\xd9\x50",
                                              25) +
                                  png.substr(33));
        EXPECT_EQ(run("invert in.png -o whole.jpg").status, 0);
        const std::string jpeg = readText("whole.jpg");
        writeText("cut.jpg", jpeg.substr(0, jpeg.size() - 200));
        std::filesystem::create_directory("folder.png");
        std::filesystem::create_symlink("/dev/full", "full.png");
    }
};

using UsageErrors = BadInput;
using Failures = BadInput;

void expectOneLine(const Mistake& mistake, int status)
{
    const auto before = folderContents();
    const Result result = run(mistake.arguments);
    EXPECT_EQ(result.status, status);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors.rfind("lumivex: ", 0), 0u) << result.errors;
    EXPECT_EQ(std::count(result.errors.begin(), result.errors.end(), '\n'), 1) << result.errors;
    EXPECT_NE(result.errors.find(mistake.says), std::string::npos) << result.errors;
    EXPECT_EQ(folderContents(), before);
}

std::string nameOf(const testing::TestParamInfo<Mistake>& mistake)
{
    return mistake.param.name;
}

TEST_P(UsageErrors, areOneLine)
{
    expectOneLine(GetParam(), 2);
}

TEST_P(Failures, areOneLine)
{
    expectOneLine(GetParam(), 1);
}

INSTANTIATE_TEST_SUITE_P(All, UsageErrors, testing::ValuesIn(usageErrors), nameOf);
INSTANTIATE_TEST_SUITE_P(All, Failures, testing::ValuesIn(failures), nameOf);
} // namespace
} // namespace test
