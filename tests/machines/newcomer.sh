#!/bin/sh
# What a newcomer does on a bare machine, in the checkout: the demo while the system updates itself in the background,
# then what the README says.
set -eu
apt-get update -qq -o APT::Update::Pre-Invoke::='sleep 10' &
sleep 1
./run demo
[ -s out/gallery/index.html ]
python3 tests/machines/readme.py
