// SPDX-License-Identifier: MIT
#include "Header.h"

#include "clsHeaders.h"

int Header::Index() const
{
    return mOwner ? mOwner->positionOf(this) : 0;
}
