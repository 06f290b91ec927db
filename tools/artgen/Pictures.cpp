#include "Pictures.h"

namespace artgen
{

namespace
{
std::vector<PictureLister>& Listers()
{
    static std::vector<PictureLister> s_listers;
    return s_listers;
}
} // namespace

PictureRegistrar::PictureRegistrar(PictureLister p_lister)
{
    Listers().push_back(p_lister);
}

const std::vector<PictureLister>& GetPictureListers()
{
    return Listers();
}

} // namespace artgen
