// The host's hold on the block that tells a dump its folder.
#include "jighost/session/FolderBlock.h"

#include "jighost/text/HostError.h"
#include "tests/support/Support.h"
#include "tests/support/SupportBlocks.h"

TEST(FolderBlockTest, BlockThatDoesNotOpenIsToldWithItsOwnError) {
    const NameTaken taken("SHARED_NAME_FOLDER");
    EXPECT_THAT(
        [] { const FolderBlock block; },
        testing::ThrowsMessage<HostError>("can't open the block SHARED_NAME_FOLDER (error 6)"));
}
