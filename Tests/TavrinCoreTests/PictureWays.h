// The ways in which a picture's file is decoded: what holds for one must hold for all.
#pragma once

#include "TavrinCore/Platform/PictureDecoder.h"

#include <functional>
#include <map>
#include <string>

namespace tavrin {

/// Whether it is a picture, by each way that a file is decoded.
using Decoder = std::function<bool(FileReader& file, const CancellationCallback& isCancelled)>;
inline const std::map<std::string, Decoder> kDecoders{
    {"in grey",
     [](FileReader& file, const auto& isCancelled) { return decodeThumbnail(file, isCancelled).has_value(); }},
    {"in colours", [](FileReader& file,
                      const auto& isCancelled) { return decodePicture(file, {.side = 256}, isCancelled).has_value(); }},
    {"as a square", [](FileReader& file, const auto& isCancelled) {
         return decodePicture(file, {.side = 100, .shape = PictureForm::Shape::square}, isCancelled).has_value();
     }}};

}  // namespace tavrin
