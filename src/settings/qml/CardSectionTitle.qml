import Velmorand.Settings

/// A card's heading.
Txt {
    role: BrandTheme.cardTitle
    isHeading: true
}
