// Versions: a byte chooses UTF-8 or UTF-16, then come two texts, separated by a line feed.
//
// - Which of the two is newer is what a second, independent reading of them says.
// - No text is newer than itself, and not both are newer than the other.

#include "Fuzzing.h"
#include "NewerVersion.h"
#include "Updater.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    Input input(data, size);
    const bool wide = input.flag();
    const QString left = textOf(input.line(), wide);
    const QString right = textOf(input.rest(), wide);

    const bool leftNewer = Updater::isNewer(left, right);
    const bool rightNewer = Updater::isNewer(right, left);
    require(leftNewer == isNewerVersion(left, right), "The first against the second is wrong");
    require(rightNewer == isNewerVersion(right, left), "The second against the first is wrong");
    require(!(leftNewer && rightNewer), "Each is newer than the other");
    require(!Updater::isNewer(left, left), "A version is newer than itself");
    return 0;
}
