#include "agent/StandardStreams.h"

#include <fcntl.h>
#include <io.h>

#include <cstdio>
#include <initializer_list>

void zorcall::useBinaryStreams()
{
    for (FILE* stream : {stdin, stdout, stderr})
        _setmode(_fileno(stream), _O_BINARY);
}
