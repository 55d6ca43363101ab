#pragma once

namespace norvo {

/// A place in a text file. Lines and columns count from 1, columns in characters; 0: unknown.
struct Place
{
    int line = 0;
    int column = 0;
};

} // namespace norvo
