// OpenCV, with one thread.
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

#include "bench/subjects/peers.h"

namespace bench {
namespace {

int DepthOf(const Picture& picture) {
  if (picture.pixelBytes == 16) return CV_32F;
  return picture.pixelBytes == 8 ? CV_16U : CV_8U;
}

cv::Mat MatOf(const Picture& picture) {
  cv::setNumThreads(1);
  return {picture.height, picture.width, CV_MAKETYPE(DepthOf(picture), 4), picture.pixels,
          picture.rowBytes};
}

// A matrix of the right size and type is written where it is.
Prepare Convert(double scale) {
  return [scale](const Picture& from, const Picture& to) {
    const cv::Mat source = MatOf(from);
    const cv::Mat destination = MatOf(to);
    return Repeat([=] { source.convertTo(destination, destination.type(), scale); });
  };
}

Work Copy(const Picture& from, const Picture& to) {
  const cv::Mat source = MatOf(from);
  const cv::Mat destination = MatOf(to);
  return Repeat([=] { source.copyTo(destination); });
}

Work Fill(const Picture&, const Picture& to) {
  const cv::Mat destination = MatOf(to);
  const cv::Scalar word(kFillWord & 0xFF, kFillWord >> 8 & 0xFF, kFillWord >> 16 & 0xFF,
                        kFillWord >> 24);
  return Repeat([=] { cv::Mat(destination).setTo(word); });
}

Work Scale(const Picture& from, const Picture& to) {
  const cv::Mat source = MatOf(from);
  const cv::Mat destination = MatOf(to);
  return Repeat(
      [=] { cv::resize(source, destination, destination.size(), 0, 0, cv::INTER_NEAREST); });
}

Work MakeFrame(int width, int height) {
  return Repeat([=] {
    const cv::Mat frame(height, width, CV_32FC4);
    static_cast<void>(frame);
  });
}

[[maybe_unused]] const bool kAdded =
    AddPeer("OpenCV", Operation::From8to16, Convert(32768.0 / 255)) &&
    AddPeer("OpenCV", Operation::From8toF, Convert(1.0 / 255)) &&
    AddPeer("OpenCV", Operation::From16to8, Convert(255 / 32768.0)) &&
    AddPeer("OpenCV", Operation::FromFto8, Convert(255)) &&
    AddPeer("OpenCV", Operation::Copy, Copy) && AddPeer("OpenCV", Operation::Fill, Fill) &&
    AddPeer("OpenCV", Operation::HalveNearest, Scale) &&
    AddPeer("OpenCV", Operation::DoubleNearest, Scale) && AddFramePeer("cv::Mat", MakeFrame);

}  // namespace
}  // namespace bench
