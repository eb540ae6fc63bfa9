// A document to search in, with nothing looked for yet.
#pragma once

#include "search/find_state.h"
#include "unit/document/document_fixture.h"
#include "view/view_state.h"

class SearchFixture : public DocumentFixture {
protected:
    void SetUp() override
    {
        DocumentFixture::SetUp();
        ResetSearch();
    }

    void TearDown() override
    {
        ResetSearch();
        DocumentFixture::TearDown();
    }

private:
    static void ResetSearch()
    {
        View = ViewState{};
        ViewOptions = ViewSettings{};
        Find = FindState{};
    }
};
