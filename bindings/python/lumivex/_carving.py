"""Content-aware resizing: the order of the seam steps and the arrays they share."""
import numpy

from . import _arrays, _values
from ._functions import FUNCTIONS


class _Carver:
    """A picture on its way to another size.

    The companion is kept aligned with it: its green and red are the guide, its blue the grey that the energy comes
    from, so that a painted picture does not mislead the seams of the other direction.
    """

    def __init__(self, picture, guide, preview, seam_done):
        self.image = picture.copy()
        self.companion = guide
        self.companion[..., 0] = FUNCTIONS["seam_grey"](picture)[..., 0]
        self._preview = preview
        self._seam_done = seam_done

    def transpose(self):
        self.image, self.companion = (numpy.ascontiguousarray(picture.transpose(1, 0, 2))
                                      for picture in (self.image, self.companion))

    def most_given_away(self):
        """The most pixels in a row of those that the guide gives away: as many seams remove them."""
        return int((self.companion[..., 2] >= 128).sum(axis=1).max())

    def set_width(self, wanted):
        """False when no seam was cheap enough: the picture is then some seams short of the wanted size."""
        columns = self.image.shape[1]
        if wanted == columns:
            return True
        # All insertions at once: in portions, each would go where the one before has made it flat.
        return self._widen(wanted - columns) if wanted > columns else self._narrow(columns - wanted)

    def set_height(self, wanted):
        self.transpose()
        done = self.set_width(wanted)
        self.transpose()
        return done

    def _maps(self):
        """The energy map, the cumulative map, the cheapest seam's end, and the weight of the forward costs.

        The library leaves the guide out of account at the rim, where it is added here. While anything is given away
        there are no forward costs: they would cancel its pull.
        """
        energy = FUNCTIONS["seam_energy"](self.companion, self.companion)
        pull = 3 * self.companion[..., 1].astype(numpy.int32) - 20 * self.companion[..., 2].astype(numpy.int32)
        pull[1:-1, 1:-1] = 0
        energy += pull
        weight = 0 if self.most_given_away() else 1
        seam_map, end = FUNCTIONS["seam_map"](energy, weight=weight)
        return energy, seam_map, end, weight

    def _narrow(self, seams):
        energy, seam_map, end, weight = self._maps()
        remove = FUNCTIONS["seam_remove_show" if self._preview else "seam_remove"]
        columns = self.image.shape[1]
        while seams and end is not None:
            start = remove(self.image, self.companion, seam_map, energy, end, last_column=columns - 1)
            columns -= 1
            seams -= 1
            end = None
            if columns:
                # A step of 2 is nearly as good as a map built anew for each seam; with 1 seams crowd.
                end = FUNCTIONS["seam_map_update"](seam_map, energy, start, weight=weight, last_column=columns - 1)
            self._seam_done()
        self.image, self.companion = (numpy.ascontiguousarray(picture[:, :columns])
                                      for picture in (self.image, self.companion))
        return seams == 0

    def _widen(self, seams):
        energy, seam_map, end, weight = self._maps()
        table = numpy.zeros((self.image.shape[0], seams), numpy.uint32)
        for number in range(seams):
            if end is None:
                return False
            FUNCTIONS["seam_record"](table, seam_map, energy, end, number)
            end = FUNCTIONS["seam_expand_update"](seam_map, energy, int(table[0, number]), weight=weight)
            self._seam_done()
        show = FUNCTIONS["seams_insert_show" if self._preview else "seams_insert"]
        self.image = show(table, _with_room(self.image, seams)).image
        self.companion = FUNCTIONS["seams_insert"](table, _with_room(self.companion, seams)).image
        return True


def _with_room(picture, columns):
    """A picture with free columns on its right. The last pixel stands at the new end too, where the library puts
    none."""
    room = numpy.zeros((picture.shape[0], columns, 4), numpy.uint8)
    room[:, -1] = picture[:, -1]
    return numpy.concatenate([picture, room], axis=1)


def _guide(picture, protect, remove):
    guide = numpy.zeros(picture.shape, numpy.uint8)
    for name, mask, channel in (("protect", protect, 1), ("remove", remove, 2)):
        if mask is None:
            continue
        mask = numpy.asarray(mask)
        if mask.shape != picture.shape[:2] or mask.dtype not in (numpy.uint8, numpy.bool_):
            raise ValueError(f"carve: {name}: expected uint8 or bool of shape {picture.shape[:2]}, "
                             f"got {mask.dtype} of shape {mask.shape}")
        guide[..., channel] = mask.astype(numpy.uint8) * 255 if mask.dtype == numpy.bool_ else mask
    return guide


def _remove_marked(carver):
    """Narrows the picture until nothing is left of what the guide gives away, across it where it is thinner."""
    across = carver.most_given_away()
    carver.transpose()
    sideways = carver.most_given_away() < across
    if not sideways:
        carver.transpose()
    done = True
    # Seams that bend round something leave a rest, which the next ones take.
    while done and (marked := carver.most_given_away()):
        if marked >= carver.image.shape[1]:
            raise ValueError("carve: remove: nothing would be left")
        done = carver.set_width(carver.image.shape[1] - marked)
    if sideways:
        carver.transpose()
    return done


def carve(picture, width=None, height=None, *, protect=None, remove=None, preview=False, progress=None):
    """Resizes a picture along seams through what is flat, and keeps what stands out.

    width, height    Pixels, up to twice what the picture has; without one it stays.
    protect, remove  (height, width) masks of bool or uint8: what to keep, and what to take out first.
    preview          Paints removed seams red and inserted ones yellow.
    progress         Called with the number of seams done, after each.
    """
    _arrays.picture("carve: picture", picture)
    wanted = {"width": (width, picture.shape[1]), "height": (height, picture.shape[0])}
    for name, (size, now) in wanted.items():
        if size is not None:
            _values.whole(f"carve: {name}", size, 1, 2 * now)
    if width is None and height is None and remove is None:
        raise ValueError("carve: nothing to do: neither a size is given nor anything to remove")
    done = 0

    def seam_done():
        nonlocal done
        done += 1
        if progress:
            progress(done)

    carver = _Carver(picture, _guide(picture, protect, remove), preview, seam_done)
    if not (_remove_marked(carver) and all(
            set_size(now if size is None else size)
            for set_size, (size, now) in zip((carver.set_width, carver.set_height), wanted.values()))):
        raise ValueError("carve: no seam is left that costs little enough: protect less, or change the size by less")
    return carver.image
