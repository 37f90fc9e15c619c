#!/bin/sh
# Draws the module's icons (ImageMagick). The PNGs are committed; run this
# only to change them.
set -e
cd "$(dirname "$0")/Resources/Image"
convert -size 24x24 xc:none -fill '#2b3a4a' -draw 'roundrectangle 1,3 22,20 3,3' \
  -fill '#ffffff' -draw 'rectangle 3,7 20,18' -fill '#2b3a4a' -draw 'polyline 5,9 9,12 5,15' \
  -stroke '#2b3a4a' -strokewidth 1.5 -draw 'line 11,16 17,16' 'img_cmd(24x24).png'
convert -size 16x16 xc:none -fill '#2f5d9a' -draw 'roundrectangle 1,1 14,14 2,2' \
  -fill '#ffffff' -draw 'rectangle 4,2 11,6' -fill '#dfe7f2' -draw 'rectangle 4,9 11,14' save.png
convert -size 16x16 xc:none -fill '#2f5d9a' -draw 'roundrectangle 1,1 12,12 2,2' \
  -fill '#ffffff' -draw 'rectangle 3,2 9,5' -stroke '#d08a1a' -strokewidth 2 -draw 'line 8,15 15,8' save_as.png
convert -size 16x16 xc:none -fill '#3c3c3c' -draw 'rectangle 2,3 13,4' -draw 'rectangle 2,7 13,8' \
  -draw 'rectangle 2,11 9,12' -stroke '#d08a1a' -strokewidth 2 -draw 'line 10,14 14,10' edit.png
convert -size 16x16 xc:none -stroke '#c0392b' -strokewidth 2.5 -draw 'line 3,3 12,12' -draw 'line 12,3 3,12' clear.png
convert -size 16x16 xc:none -fill '#2e8b57' -draw 'rectangle 7,2 9,14' -draw 'rectangle 2,7 14,9' add.png
mogrify -strip ./*.png
