// OpenCV's functions for the same work, in one thread.
#include "families.h"
#include "peers.h"

#include <opencv2/imgproc.hpp>
#include <opencv2/ximgproc.hpp>

namespace bench
{
namespace
{
/// Made once: what a user would keep as well.
struct Mats
{
    cv::Mat from;
    cv::Mat bgr;
    cv::Mat grey;
    cv::Mat to = cv::Mat(height, width, CV_8UC4);
    cv::Mat cross = cv::getStructuringElement(cv::MORPH_CROSS, {3, 3});
    cv::Mat map;

    explicit Mats(Buffers& b) : from(height, width, CV_8UC4, b.source.data())
    {
        cv::cvtColor(from, bgr, cv::COLOR_BGRA2BGR);
        cv::cvtColor(from, grey, cv::COLOR_BGRA2GRAY);
        // OpenCV reads only.
        const cv::Mat discsOfFour(mapRows, mapColumns, CV_8UC4, const_cast<uint8_t*>(discs().data()));
        cv::extractChannel(discsOfFour, map, 1);
    }
};

void addPoints(Mats& m, Buffers& b)
{
    rowOf("IM_Inverser").against("OpenCV bitwise_not", [&m] { cv::bitwise_not(m.from, m.to); });
    rowOf("IM_Brillance").against("OpenCV add", [&m] { cv::add(m.from, cv::Scalar(17, 17, 17, 0), m.to); });
    rowOf("IM_Gris").against("OpenCV cvtColor to grey and back", [&m] {
        cv::cvtColor(m.from, m.grey, cv::COLOR_BGRA2GRAY);
        cv::cvtColor(m.grey, m.to, cv::COLOR_GRAY2BGRA);
    });
    static cv::Mat floats(height, width, CV_32FC3);
    static cv::Mat lab(height, width, CV_32FC3);
    rowOf("IM_GetLab").against("OpenCV cvtColor to Lab, floats", [&m] {
        m.bgr.convertTo(floats, CV_32F, 1.0 / 255);
        cv::cvtColor(floats, lab, cv::COLOR_BGR2Lab);
    });
    rowOf("IM_NiveauPlus").against("OpenCV LUT", [&m, &b] {
        const cv::Mat table(1, 256, CV_8U, b.family.data());
        cv::LUT(m.from, table, m.to);
    });
    rowOf("IM_GetDataHisto").against("OpenCV calcHist, three channels", [&m] {
        static const int bins = 256;
        static const float range[] = {0, 256};
        static const float* ranges[] = {range};
        for (const int channel : {0, 1, 2}) {
            cv::Mat counts;
            cv::calcHist(&m.from, 1, &channel, cv::noArray(), counts, 1, &bins, ranges);
        }
    });
}

void addWindows(Mats& m)
{
    const std::pair<const char*, int> kernels[] = {
        {"IM_FlouGaussien", 5}, {"IM_FlouGaussien77", 7}, {"IM_FlouGaussien99", 9}};
    for (const auto& [name, side] : kernels) {
        const cv::Size size(side, side);
        rowOf(name).against("OpenCV GaussianBlur", [&m, size] { cv::GaussianBlur(m.from, m.to, size, 0); });
    }
    for (const int radius : {2, 12, 100}) {
        const cv::Size size(2 * radius - 1, 2 * radius - 1);
        rowOf("IM_Flou, radius " + std::to_string(radius)).against("OpenCV blur, twice", [&m, size] {
            static cv::Mat between;
            cv::blur(m.from, between, size);
            cv::blur(between, m.to, size);
        });
    }
    rowOf("IM_ErosionRGB").against("OpenCV erode, cross", [&m] { cv::erode(m.from, m.to, m.cross); });
    rowOf("IM_DilatationRGB").against("OpenCV dilate, cross", [&m] { cv::dilate(m.from, m.to, m.cross); });
    rowOf("IM_Contour").against("OpenCV Sobel, both ways, and magnitude", [&m] {
        static cv::Mat across;
        static cv::Mat down;
        static cv::Mat strength;
        cv::cvtColor(m.from, m.grey, cv::COLOR_BGRA2GRAY);
        cv::Sobel(m.grey, across, CV_32F, 1, 0);
        cv::Sobel(m.grey, down, CV_32F, 0, 1);
        cv::magnitude(across, down, strength);
    });
}

void addMaps(Mats& m)
{
    rowOf("TRACE_Seuil").against("OpenCV inRange and merge", [&m] {
        cv::inRange(m.from, cv::Scalar(117, 119, 121, 0), cv::Scalar(197, 199, 201, 255), m.grey);
        const cv::Mat all[] = {m.grey, m.grey, m.grey, m.grey};
        cv::merge(all, 4, m.to);
    });
    rowOf("graph and walk, 900 discs").against("OpenCV findContours", [&m] {
        std::vector<std::vector<cv::Point>> contours;
        cv::findContours(m.map, contours, cv::RETR_CCOMP, cv::CHAIN_APPROX_NONE);
    });
    rowOf("thinning until stable, 900 discs").against("OpenCV thinning", [&m] {
        cv::Mat thinned;
        cv::ximgproc::thinning(m.map, thinned);
    });
}
} // namespace

void addOpenCv(Buffers& b)
{
    cv::setNumThreads(1);
    static Mats mats(b);
    addPoints(mats, b);
    addWindows(mats);
    addMaps(mats);
}
} // namespace bench
