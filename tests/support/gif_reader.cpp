// gif_reader.cpp - giflib reads from memory; rows of interlaced images are put in order by giflib as well.

#include "gif_reader.h"

#include <algorithm>
#include <cstring>
#include <fstream>
#include <gif_lib.h>
#include <iterator>

// What giflib has read so far of the bytes.
struct Source
{
    const std::vector<uint8_t> *bytes;
    size_t next;
};

static int _Read(GifFileType *gif, GifByteType *out, int count)
{
    Source *source = static_cast<Source *>(gif->UserData);
    const size_t got = std::min(static_cast<size_t>(count), source->bytes->size() - source->next);
    if (got > 0)
    {
        std::memcpy(out, source->bytes->data() + source->next, got);
    }
    source->next += got;
    return static_cast<int>(got);
}

static std::string _Describe(int error)
{
    const char *text = GifErrorString(error);
    return text != nullptr ? text : "giflib error " + std::to_string(error);
}

static void _CopyPicture(GifFileType *gif, GifPicture *picture)
{
    const SavedImage &image = gif->SavedImages[0];
    picture->width = image.ImageDesc.Width;
    picture->height = image.ImageDesc.Height;
    picture->interlaced = image.ImageDesc.Interlace;
    const size_t size = static_cast<size_t>(picture->width) * static_cast<size_t>(picture->height);
    picture->pixels.assign(image.RasterBits, image.RasterBits + size);
    const ColorMapObject *map = image.ImageDesc.ColorMap != nullptr ? image.ImageDesc.ColorMap : gif->SColorMap;
    picture->palette.clear();
    for (int i = 0; map != nullptr && i < map->ColorCount; ++i)
    {
        picture->palette.push_back({map->Colors[i].Red, map->Colors[i].Green, map->Colors[i].Blue});
    }
    GraphicsControlBlock control;
    const bool fControl = DGifSavedExtensionToGCB(gif, 0, &control) == GIF_OK;
    picture->transparent = fControl ? control.TransparentColor : -1;
}

std::string DecodeGif(const std::vector<uint8_t> &bytes, GifPicture *picture)
{
    Source source = {&bytes, 0};
    int error = 0;
    GifFileType *gif = DGifOpen(&source, _Read, &error);
    if (gif == nullptr)
    {
        return _Describe(error);
    }
    std::string wrong;
    if (DGifSlurp(gif) != GIF_OK)
    {
        wrong = _Describe(gif->Error);
    }
    else if (gif->ImageCount < 1)
    {
        wrong = "no image";
    }
    else
    {
        _CopyPicture(gif, picture);
    }
    DGifCloseFile(gif, &error);
    return wrong;
}

std::string ReadGif(const std::string &path, GifPicture *picture)
{
    std::ifstream file(path, std::ios::binary);
    if (!file)
    {
        return "cannot open " + path;
    }
    const std::vector<uint8_t> bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    return DecodeGif(bytes, picture);
}
