<!-- SPDX-License-Identifier: Apache-2.0 -->
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
  <xsl:output method="text"/>
  <xsl:param name="title" select="'Order'"/>
  <xsl:template match="/order">
    <xsl:value-of select="$title"/>
    <xsl:text>&#10;</xsl:text>
    <xsl:for-each select="item">
      <xsl:value-of select="concat(@qty, ' x ', ., '&#10;')"/>
    </xsl:for-each>
  </xsl:template>
</xsl:stylesheet>
