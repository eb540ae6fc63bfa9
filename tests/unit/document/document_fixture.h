// Starts without a document and checks that nothing is left behind.
#pragma once

#include "document/block_cache.h"
#include "document/document_state.h"
#include "document/line_index.h"
#include "support/document_setup.h"

#include <gtest/gtest.h>

class DocumentFixture : public testing::Test {
protected:
    void SetUp() override { StartDocuments(MaxCacheSlots); }

    void TearDown() override
    {
        FreeBuffers();
        EXPECT_EQ(TestPort::LiveObjects(), 0);
        EXPECT_EQ(TestPort::OpenFiles(), 0);
        EXPECT_EQ(TestPort::Misuses(), 0);
        StartDocuments(MaxCacheSlots);
    }
};
